#pragma once

#include "rules/model/Configuration.h"

#include <optional>

namespace rules {

/// Whose version of a rule or of its place.
enum class Side { Mine, Theirs };

enum class ConflictKind {
    Changed,    ///< both changed the rule, each in its own way
    Removed,    ///< one changed the rule that the other one removed
    AddedTwice, ///< both added a rule for the same conditions, with other items
    Moved,      ///< both moved the rule, to different places
};

/// Something that only a person can decide.
struct Conflict
{
    ConflictKind kind = ConflictKind::Changed;
    CString category;           ///< its text
    std::optional<Rule> base{}; ///< as it was before; nothing for a rule that was added
    std::optional<Rule> mine{}; ///< nothing where this side removed the rule
    std::optional<Rule> theirs{};
    /// The place in the list of each side, from 0; -1 where it has none.
    int minePlace = -1;
    int theirsPlace = -1;

    /// In words for a person, in a few lines: what is in conflict and what either answer gives.
    CString Describe() const;
};

} // namespace rules
