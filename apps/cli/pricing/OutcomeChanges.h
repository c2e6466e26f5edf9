#pragma once

#include "cli/pricing/TakeoffRun.h"

namespace cli {

/// A component that two states of the rules price differently, in words.
struct OutcomeChange
{
    qint64 line = 0; ///< of the table, from 1
    CString id;
    CString name;
    CString category;
    CStringArray before; ///< what it gets: the rule first, then the items, a line each
    CStringArray after;
};

/// Which components of a table get other items or quantities, or come to another end.
struct OutcomeChanges
{
    std::uint64_t components = 0;
    std::vector<OutcomeChange> changes;
};

/// Prices the components of the job's table by its rules and by `after`, and tells those that differ. Which
/// rule applies makes no difference where what follows is the same. Raises as `PriceTakeoff` does.
OutcomeChanges CompareOutcomes(const TakeoffJob& before, const rules::ConfigurationPtr& after,
                               const embedded::Progress& progress);

} // namespace cli
