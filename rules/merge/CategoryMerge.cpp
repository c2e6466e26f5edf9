#include "rules/merge/CategoryMerge.h"

#include "rules/compare/Content.h"
#include "rules/compare/RulePairing.h"

#include <algorithm>
#include <limits>
#include <map>
#include <set>

namespace rules {

namespace {

std::vector<Rule> RulesOf(const SmallCategory* category)
{
    return category == nullptr ? std::vector<Rule>() : category->rules;
}

const Rule& At(const std::vector<Rule>& rules, int index)
{
    return rules[static_cast<std::size_t>(index)];
}

RuleCounters Highest(const RuleCounters& a, const RuleCounters& b)
{
    return {std::max(a.condition, b.condition), std::max(a.bill, b.bill), std::max(a.quota, b.quota)};
}

} // namespace

CategoryMerge::CategoryMerge(const SmallCategory* base, const SmallCategory* mine,
                             const SmallCategory* theirs, std::size_t first)
    : m_base(RulesOf(base)), m_mine(RulesOf(mine)), m_theirs(RulesOf(theirs)), m_first(first)
{
    for (const SmallCategory* category : {base, theirs, mine})
        if (category != nullptr) m_text = category->text;
    TakeBase();
    TakeAdditions();
    FindAnchors();
    FindPlaces();
}

const Rule* CategoryMerge::RuleOf(Side side, const Entry& entry) const
{
    const int index = side == Side::Mine ? entry.mine : entry.theirs;
    if (index == None) return nullptr;
    return &At(side == Side::Mine ? m_mine : m_theirs, index);
}

std::size_t CategoryMerge::AddConflict(ConflictKind kind, const Entry& entry)
{
    Conflict conflict{kind, m_text};
    if (entry.base != None) conflict.base = At(m_base, entry.base);
    if (const Rule* rule = RuleOf(Side::Mine, entry)) conflict.mine = *rule;
    if (const Rule* rule = RuleOf(Side::Theirs, entry)) conflict.theirs = *rule;
    conflict.minePlace = entry.mine;
    conflict.theirsPlace = entry.theirs;
    m_conflicts.push_back(std::move(conflict));
    return m_first + m_conflicts.size() - 1;
}

void CategoryMerge::TakeBase()
{
    const RulePairing mine = PairRules(m_base, m_mine);
    const RulePairing theirs = PairRules(m_base, m_theirs);
    for (std::size_t i = 0; i < m_base.size(); ++i) {
        Entry entry;
        entry.base = static_cast<int>(i);
        entry.mine = mine.afterOf[i];
        entry.theirs = theirs.afterOf[i];
        entry.isMovedByMine = entry.mine != None && mine.isMoved[i];
        entry.isMovedByTheirs = entry.theirs != None && theirs.isMoved[i];
        DecideContent(entry);
        m_entries.push_back(entry);
    }
}

void CategoryMerge::DecideContent(Entry& entry)
{
    const Rule& base = At(m_base, entry.base);
    const Rule* mine = RuleOf(Side::Mine, entry);
    const Rule* theirs = RuleOf(Side::Theirs, entry);
    const bool isMineChanged = mine != nullptr && !HasSameContent(base, *mine);
    const bool isTheirsChanged = theirs != nullptr && !HasSameContent(base, *theirs);
    if (mine != nullptr && theirs != nullptr) {
        const bool isConflict = isMineChanged && isTheirsChanged && !HasSameContent(*mine, *theirs);
        if (isConflict) entry.conflict = AddConflict(ConflictKind::Changed, entry);
        entry.forMine = isMineChanged || !isTheirsChanged ? mine : theirs;
        entry.forTheirs = isConflict ? theirs : entry.forMine;
    } else if (isMineChanged || isTheirsChanged) {
        entry.conflict = AddConflict(ConflictKind::Removed, entry);
        entry.forMine = mine;
        entry.forTheirs = theirs;
    }
    if (mine == nullptr) entry.place = Side::Theirs;
}

void CategoryMerge::TakeAdditions()
{
    std::vector<int> mine;
    std::vector<int> theirs;
    std::set<int> known;
    for (const Entry& entry : m_entries)
        known.insert(entry.mine);
    for (int i = 0; i < static_cast<int>(m_mine.size()); ++i)
        if (!known.contains(i)) mine.push_back(i);
    known.clear();
    for (const Entry& entry : m_entries)
        known.insert(entry.theirs);
    for (int i = 0; i < static_cast<int>(m_theirs.size()); ++i)
        if (!known.contains(i)) theirs.push_back(i);

    PairAdditions(mine, theirs, true);
    PairAdditions(mine, theirs, false);
    for (const int index : mine) {
        Entry& entry = m_entries.emplace_back();
        entry.mine = index;
        entry.forMine = entry.forTheirs = &At(m_mine, index);
    }
    for (const int index : theirs) {
        Entry& entry = m_entries.emplace_back();
        entry.theirs = index;
        entry.forMine = entry.forTheirs = &At(m_theirs, index);
        entry.place = Side::Theirs;
    }
}

/// Takes out of both lists what both sides have added: of the same content, or else for the same conditions.
void CategoryMerge::PairAdditions(std::vector<int>& mine, std::vector<int>& theirs, bool isSameContent)
{
    std::multimap<CString, int> byConditions;
    for (const int index : theirs)
        byConditions.emplace(ConditionsKey(At(m_theirs, index)), index);
    std::set<int> paired;
    std::erase_if(mine, [&](int index) {
        const Rule& rule = At(m_mine, index);
        const auto [begin, end] = byConditions.equal_range(ConditionsKey(rule));
        const auto partner = std::find_if(begin, end, [&](const auto& candidate) {
            const Rule& other = At(m_theirs, candidate.second);
            return rule.isDefault == other.isDefault && (!isSameContent || HasSameContent(rule, other));
        });
        if (partner == end) return false;
        Entry entry;
        entry.mine = index;
        entry.theirs = partner->second;
        if (!isSameContent) entry.conflict = AddConflict(ConflictKind::AddedTwice, entry);
        entry.forMine = &rule;
        entry.forTheirs = isSameContent ? &rule : &At(m_theirs, partner->second);
        m_entries.push_back(entry);
        paired.insert(partner->second);
        byConditions.erase(partner);
        return true;
    });
    std::erase_if(theirs, [&](int index) { return paired.contains(index); });
}

/// Anchors are rules that both sides have and that stand in one order: all others stand between them. Rules
/// that were there before and that neither side has moved are, and so are rules that both have added, unless
/// they stand otherwise to any of these. That is the same seen from either side.
void CategoryMerge::FindAnchors()
{
    for (Entry& entry : m_entries)
        entry.isAnchor = entry.base != None && entry.mine != None && entry.theirs != None &&
                         !entry.isMovedByMine && !entry.isMovedByTheirs;
    const std::vector<std::size_t> mine = GapsOf(Side::Mine);
    const std::vector<std::size_t> theirs = GapsOf(Side::Theirs);
    Sequence added;
    for (const std::size_t i : SequenceOf(Side::Mine))
        if (m_entries[i].base == None && m_entries[i].theirs != None && mine[i] == theirs[i])
            added.push_back(i);
    std::vector<bool> isInOrder(added.size(), true);
    int highest = None;
    for (std::size_t i = 0; i < added.size(); ++i) {
        isInOrder[i] = m_entries[added[i]].theirs > highest;
        highest = std::max(highest, m_entries[added[i]].theirs);
    }
    int lowest = std::numeric_limits<int>::max();
    for (std::size_t i = added.size(); i-- > 0;) {
        Entry& entry = m_entries[added[i]];
        entry.isAnchor = isInOrder[i] && entry.theirs < lowest;
        lowest = std::min(lowest, entry.theirs);
    }
}

CategoryMerge::Sequence CategoryMerge::SequenceOf(Side side) const
{
    const auto indexOf = [&](std::size_t i) {
        return side == Side::Mine ? m_entries[i].mine : m_entries[i].theirs;
    };
    Sequence sequence;
    for (std::size_t i = 0; i < m_entries.size(); ++i)
        if (indexOf(i) != None) sequence.push_back(i);
    std::sort(sequence.begin(), sequence.end(),
              [&](std::size_t a, std::size_t b) { return indexOf(a) < indexOf(b); });
    return sequence;
}

/// By entry the number of anchors before it.
std::vector<std::size_t> CategoryMerge::GapsOf(Side side) const
{
    std::vector<std::size_t> gaps(m_entries.size(), 0);
    std::size_t gap = 0;
    for (const std::size_t i : SequenceOf(side)) {
        gaps[i] = gap;
        if (m_entries[i].isAnchor) ++gap;
    }
    return gaps;
}

void CategoryMerge::FindPlaces()
{
    const std::vector<std::size_t> mine = GapsOf(Side::Mine);
    const std::vector<std::size_t> theirs = GapsOf(Side::Theirs);
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        Entry& entry = m_entries[i];
        if (entry.mine == None || entry.theirs == None || !entry.isMovedByTheirs) continue;
        if (!entry.isMovedByMine)
            entry.place = Side::Theirs;
        else if (mine[i] != theirs[i])
            entry.placeConflict = AddConflict(ConflictKind::Moved, entry);
    }
}

CategoryMerge::Sequence CategoryMerge::Order(const std::vector<Side>& answers) const
{
    Sequence order;
    const Sequence mine = SequenceOf(Side::Mine);
    const Sequence theirs = SequenceOf(Side::Theirs);
    auto inMine = mine.begin();
    auto inTheirs = theirs.begin();
    const auto takeUpToAnchor = [&](Sequence::const_iterator& at, const Sequence& all, Side side) {
        for (; at != all.end() && !m_entries[*at].isAnchor; ++at) {
            const Entry& entry = m_entries[*at];
            const Side place = entry.placeConflict == NoConflict ? entry.place : answers[entry.placeConflict];
            if (place == side) order.push_back(*at);
        }
    };
    for (;;) {
        takeUpToAnchor(inMine, mine, Side::Mine);
        takeUpToAnchor(inTheirs, theirs, Side::Theirs);
        if (inMine == mine.end() || inTheirs == theirs.end()) return order;
        order.push_back(*inMine);
        ++inMine;
        ++inTheirs;
    }
}

const Rule* CategoryMerge::Chosen(const Entry& entry, const std::vector<Side>& answers) const
{
    if (entry.conflict == NoConflict) return entry.forMine;
    return answers[entry.conflict] == Side::Mine ? entry.forMine : entry.forTheirs;
}

/// A rule that one side has numbered anew keeps its new id.
int CategoryMerge::IdOf(const Entry& entry, const Rule& chosen) const
{
    const Rule* mine = RuleOf(Side::Mine, entry);
    const Rule* theirs = RuleOf(Side::Theirs, entry);
    if (mine == nullptr || theirs == nullptr) return chosen.id;
    const bool hasMineFormerId = entry.base != None && mine->id == At(m_base, entry.base).id;
    return hasMineFormerId ? theirs->id : mine->id;
}

RuleCounters CategoryMerge::CountersOf(const Entry& entry, const Rule& chosen) const
{
    RuleCounters counters = chosen.counters;
    if (entry.base != None) counters = Highest(counters, At(m_base, entry.base).counters);
    for (const Side side : {Side::Mine, Side::Theirs})
        if (const Rule* rule = RuleOf(side, entry)) counters = Highest(counters, rule->counters);
    return counters;
}

/// Whether two rules have one id in a list that was given: that is kept, for the first of them is the one
/// that is found by it.
bool CategoryMerge::StandSoInAFile(const Entry& one, const Entry& other) const
{
    for (const Side side : {Side::Mine, Side::Theirs}) {
        const Rule* a = RuleOf(side, one);
        const Rule* b = RuleOf(side, other);
        if (a != nullptr && b != nullptr && a->id == b->id) return true;
    }
    return false;
}

int CategoryMerge::FreshId(const std::vector<Rule>& rules) const
{
    std::set<int> used;
    for (const std::vector<Rule>* list : {&m_base, &m_mine, &m_theirs, &rules})
        for (const Rule& rule : *list)
            used.insert(rule.id);
    if (*used.rbegin() < std::numeric_limits<int>::max()) return *used.rbegin() + 1;
    int id = 1;
    while (used.contains(id))
        ++id;
    return id;
}

/// Rules that were there before keep their ids, then those that mine has added, then those of theirs.
void CategoryMerge::NumberRules(const Sequence& order, std::vector<Rule>& rules) const
{
    std::vector<std::size_t> turn(order.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        turn[i] = i;
    const auto rank = [&](std::size_t i) {
        const Entry& entry = m_entries[order[i]];
        if (entry.base != None) return 0;
        return entry.mine != None ? 1 : 2;
    };
    std::stable_sort(turn.begin(), turn.end(),
                     [&](std::size_t a, std::size_t b) { return rank(a) < rank(b); });
    std::map<int, std::size_t> ownerOf;
    for (const std::size_t i : turn) {
        const auto [owner, isFree] = ownerOf.emplace(rules[i].id, order[i]);
        if (isFree || StandSoInAFile(m_entries[owner->second], m_entries[order[i]])) continue;
        rules[i].id = FreshId(rules);
        ownerOf.emplace(rules[i].id, order[i]);
    }
}

std::vector<Rule> CategoryMerge::Result(const std::vector<Side>& answers) const
{
    Sequence order;
    std::vector<Rule> rules;
    for (const std::size_t i : Order(answers)) {
        const Entry& entry = m_entries[i];
        const Rule* chosen = Chosen(entry, answers);
        if (chosen == nullptr) continue;
        Rule& rule = rules.emplace_back(*chosen);
        rule.id = IdOf(entry, *chosen);
        rule.counters = CountersOf(entry, *chosen);
        order.push_back(i);
    }
    NumberRules(order, rules);
    return rules;
}

} // namespace rules
