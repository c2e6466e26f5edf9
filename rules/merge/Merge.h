#pragma once

#include "rules/merge/Conflict.h"

namespace rules {

/// Brings two states together that come from one, by rule. What only one side has changed, added, removed or
/// moved is done; what both have done alike is done once; the rest is a conflict. Rules that one side added
/// stand behind the rules behind which it put them; where both added some at one place, those of mine come
/// first. Mine is the state whose ids and order stay where nothing speaks against it; but for these, and with
/// the answers exchanged, the result is the same from either side.
class Merge
{
public:
    /// Compares the three. Nothing of them is needed afterwards.
    Merge(const Configuration& base, const Configuration& mine, const Configuration& theirs);
    ~Merge();
    Merge(const Merge&) = delete;
    Merge& operator=(const Merge&) = delete;

    /// All conflicts, in the order of the categories of mine.
    const std::vector<Conflict>& Conflicts() const noexcept { return m_conflicts; }

    /// The merged rules, given an answer for each conflict. A rule that was added gets another id when the
    /// merged list has its own already; the counters of a rule are at least those of all states. Raises
    /// `std::invalid_argument` for another number of answers than of conflicts.
    Configuration Result(const std::vector<Side>& answers) const;

private:
    struct Category;
    class Builder;

    /// A specialty of the result with its big categories, without small ones.
    struct Shape
    {
        Specialty specialty;
        bool isGone = false;         ///< a side took it out: it stays only where it holds something
        std::vector<bool> isBigGone; ///< the same for its big categories
    };

    std::vector<Shape> m_shape;
    std::vector<std::unique_ptr<Category>> m_categories;
    std::vector<Conflict> m_conflicts;
};

} // namespace rules
