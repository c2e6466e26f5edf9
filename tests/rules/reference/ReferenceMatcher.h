#pragma once

#include "rules/model/Configuration.h"
#include "rules/model/Facts.h"

#include <map>

namespace test {

/// A component as a take-off table has it.
struct Component
{
    CString name;
    std::map<CString, CString> cells; ///< by header
};

/// Which rule applies, as docs/matching.md tells it: word by word, rule by rule, every text read anew,
/// nothing shared with the matcher that it is the measure of. The index in the list; -1 when no rule applies.
int ReferenceMatch(const std::vector<rules::Rule>& rules, const rules::CategoryFacts& facts,
                   const Component& component);

} // namespace test
