#pragma once

#include "shared/RuleFileState.h"

namespace editor {

/// How many rules a rule file has for a specialty (see `rules::CountOf`).
struct SpecialtyCount
{
    CString specialty;
    qsizetype rules = 0;
};

/// A rule file of the project as its list shows it.
struct RuleFileEntry
{
    shared::RuleFileState state;
    CArray<SpecialtyCount> counts{}; ///< in the order of the file; empty unless it can be read

    qsizetype Rules() const;
};

/// Reads a file and tells what the list shows of it. Asks no host, so it may run on any thread. Raises
/// nothing for what the file holds.
RuleFileEntry ExamineEntry(const CString& path);

} // namespace editor
