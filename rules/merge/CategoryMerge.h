#pragma once

#include "rules/merge/Conflict.h"

namespace rules {

/// The merging of the rules of one small category.
class CategoryMerge
{
public:
    /// Null for a state that has no such category. `first` is the number of conflicts before those of this
    /// one.
    CategoryMerge(const SmallCategory* base, const SmallCategory* mine, const SmallCategory* theirs,
                  std::size_t first);

    const std::vector<Conflict>& Conflicts() const noexcept { return m_conflicts; }
    /// The merged rules; `answers` are those of all categories. Empty when the category goes.
    std::vector<Rule> Result(const std::vector<Side>& answers) const;

private:
    static constexpr int None = -1;
    static constexpr std::size_t NoConflict = static_cast<std::size_t>(-1);

    /// A rule of any of the three states.
    struct Entry
    {
        int base = None; ///< indexes in the lists
        int mine = None;
        int theirs = None;
        bool isMovedByMine = false;
        bool isMovedByTheirs = false;
        /// What is taken, by the answer where there is a conflict; null for nothing.
        const Rule* forMine = nullptr;
        const Rule* forTheirs = nullptr;
        std::size_t conflict = NoConflict; ///< of the content
        Side place = Side::Mine;           ///< whose list tells where it stands
        std::size_t placeConflict = NoConflict;
        bool isAnchor = false;
    };

    using Sequence = std::vector<std::size_t>; ///< of entries

    void TakeBase();
    void DecideContent(Entry& entry);
    void TakeAdditions();
    void PairAdditions(std::vector<int>& mine, std::vector<int>& theirs, bool isSameContent);
    void FindAnchors();
    void FindPlaces();
    std::vector<std::size_t> GapsOf(Side side) const;
    Sequence SequenceOf(Side side) const;
    Sequence Order(const std::vector<Side>& answers) const;
    std::size_t AddConflict(ConflictKind kind, const Entry& entry);
    const Rule* RuleOf(Side side, const Entry& entry) const;
    const Rule* Chosen(const Entry& entry, const std::vector<Side>& answers) const;
    int IdOf(const Entry& entry, const Rule& chosen) const;
    RuleCounters CountersOf(const Entry& entry, const Rule& chosen) const;
    bool StandSoInAFile(const Entry& one, const Entry& other) const;
    void NumberRules(const Sequence& order, std::vector<Rule>& rules) const;
    int FreshId(const std::vector<Rule>& rules) const;

    // Held, since what is merged is needed until the answers are there.
    CString m_text;
    std::vector<Rule> m_base;
    std::vector<Rule> m_mine;
    std::vector<Rule> m_theirs;
    std::size_t m_first;
    std::vector<Entry> m_entries;
    std::vector<Conflict> m_conflicts;
};

} // namespace rules
