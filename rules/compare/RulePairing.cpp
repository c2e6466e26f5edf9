#include "rules/compare/RulePairing.h"

#include "rules/compare/Content.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace rules {

namespace {

constexpr int None = RulePairing::None;

std::size_t Index(int index)
{
    return static_cast<std::size_t>(index);
}

template <typename Part>
bool ShareAny(const std::vector<Part>& a, const std::vector<Part>& b)
{
    return std::any_of(a.begin(), a.end(), [&](const Part& one) {
        return std::any_of(b.begin(), b.end(), [&](const Part& other) { return HasSameContent(one, other); });
    });
}

bool ShareNumber(const Rule& a, const Rule& b)
{
    const auto sameBill = [&](const BillItem& one) {
        return std::any_of(b.bills.begin(), b.bills.end(),
                           [&](const BillItem& other) { return one.record.strQdId == other.record.strQdId; });
    };
    const auto sameQuota = [&](const QuotaItem& one) {
        return std::any_of(b.quotas.begin(), b.quotas.end(), [&](const QuotaItem& other) {
            return one.record.strDeId == other.record.strDeId;
        });
    };
    return std::any_of(a.bills.begin(), a.bills.end(), sameBill) ||
           std::any_of(a.quotas.begin(), a.quotas.end(), sameQuota);
}

bool ShareAttribute(const Rule& a, const Rule& b)
{
    return std::any_of(a.conditions.begin(), a.conditions.end(), [&](const Condition& one) {
        return std::any_of(b.conditions.begin(), b.conditions.end(),
                           [&](const Condition& other) { return one.attribute == other.attribute; });
    });
}

bool IsBare(const Rule& rule)
{
    return rule.conditions.empty() && rule.bills.empty() && rule.quotas.empty();
}

bool HasItems(const Rule& rule)
{
    return !rule.bills.empty() || !rule.quotas.empty();
}

/// Whether two rules of one id can be one rule that was changed. A rule that was just added is bare, and all
/// that comes into it later makes it no other rule.
bool CanBeOne(const Rule& a, const Rule& b)
{
    if (a.isDefault != b.isDefault) return false;
    if (a.isDefault || IsBare(a) || IsBare(b)) return true;
    if (!HasItems(a) && !HasItems(b)) return ShareAttribute(a, b);
    return ShareAny(a.conditions, b.conditions) || ShareNumber(a, b);
}

Rule WithoutConditions(Rule rule)
{
    rule.conditions.clear();
    return rule;
}

class Pairer
{
public:
    Pairer(const std::vector<Rule>& before, const std::vector<Rule>& after) : m_before(before), m_after(after)
    {
        m_result.afterOf.assign(before.size(), None);
        m_result.beforeOf.assign(after.size(), None);
        PairEnds();
        for (std::size_t i = m_first; i < m_beforeEnd; ++i)
            m_ids.insert(before[i].id);
    }

    RulePairing Run()
    {
        PairById([](const Rule& a, const Rule& b) { return HasSameContent(a, b); });
        // An id that stands for another rule now was given anew: what is said goes before it.
        PairByContent([this](const Rule& rule) { return m_ids.contains(rule.id); });
        PairById(CanBeOne);
        PairByContent([](const Rule&) { return true; });
        PairBy(
            ConditionsKey, [](const Rule&) { return true; },
            [](const Rule& a, const Rule& b) { return a.isDefault == b.isDefault; });
        PairBy([](const Rule& rule) { return ContentHash(WithoutConditions(rule)); }, HasItems,
               [](const Rule& a, const Rule& b) {
                   return HasSameContent(WithoutConditions(a), WithoutConditions(b)) &&
                          ShareAny(a.conditions, b.conditions);
               });
        m_result.isMoved = FindMoved(m_result.afterOf);
        return std::move(m_result);
    }

private:
    bool IsFreeBefore(std::size_t i) const { return m_result.afterOf[i] == None; }
    bool IsFreeAfter(std::size_t j) const { return m_result.beforeOf[j] == None; }

    void Pair(std::size_t i, std::size_t j)
    {
        m_result.afterOf[i] = static_cast<int>(j);
        m_result.beforeOf[j] = static_cast<int>(i);
    }

    /// Most rules are the same at the same place, from the start or from the end.
    void PairEnds()
    {
        const auto isSame = [&](std::size_t i, std::size_t j) {
            return m_before[i].id == m_after[j].id && HasSameContent(m_before[i], m_after[j]);
        };
        m_beforeEnd = m_before.size();
        m_afterEnd = m_after.size();
        for (; m_first < std::min(m_beforeEnd, m_afterEnd) && isSame(m_first, m_first); ++m_first)
            Pair(m_first, m_first);
        for (; m_beforeEnd > m_first && m_afterEnd > m_first && isSame(m_beforeEnd - 1, m_afterEnd - 1);
             --m_beforeEnd, --m_afterEnd)
            Pair(m_beforeEnd - 1, m_afterEnd - 1);
    }

    /// Indexes of the second list's rules that have no partner, by a key.
    template <typename Key, typename Wanted>
    auto FreeBy(Key key, Wanted wanted) const
    {
        std::unordered_map<decltype(key(m_after[0])), std::vector<std::size_t>> found;
        for (std::size_t j = m_first; j < m_afterEnd; ++j)
            if (IsFreeAfter(j) && wanted(m_after[j])) found[key(m_after[j])].push_back(j);
        return found;
    }

    /// Pairs each rule without a partner with the first of its key that has none either and that fits.
    template <typename Key, typename Wanted, typename Fits>
    void PairBy(Key key, Wanted wanted, Fits fits)
    {
        const auto candidates = FreeBy(key, wanted);
        if (candidates.empty()) return;
        for (std::size_t i = m_first; i < m_beforeEnd; ++i) {
            if (!IsFreeBefore(i)) continue;
            const auto found = candidates.find(key(m_before[i]));
            if (found == candidates.end()) continue;
            const auto partner = std::find_if(found->second.begin(), found->second.end(), [&](std::size_t j) {
                return IsFreeAfter(j) && fits(m_before[i], m_after[j]);
            });
            if (partner != found->second.end()) Pair(i, *partner);
        }
    }

    template <typename Fits>
    void PairById(Fits fits)
    {
        PairBy([](const Rule& rule) { return rule.id; }, [](const Rule&) { return true; }, fits);
    }

    template <typename Wanted>
    void PairByContent(Wanted wanted)
    {
        PairBy(ContentHash, wanted, [](const Rule& a, const Rule& b) { return HasSameContent(a, b); });
    }

    const std::vector<Rule>& m_before;
    const std::vector<Rule>& m_after;
    RulePairing m_result;
    // Between these the lists differ.
    std::size_t m_first = 0;
    std::size_t m_beforeEnd = 0;
    std::size_t m_afterEnd = 0;
    std::unordered_set<int> m_ids; ///< those of the first list there
};

} // namespace

std::vector<bool> FindMoved(const std::vector<int>& places)
{
    std::vector<bool> isMoved(places.size(), false);
    std::vector<std::size_t> ends; // of the rising sequence of each length the index of its last place
    std::vector<int> previous(places.size(), None);
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (places[i] == None) continue;
        isMoved[i] = true;
        const auto end = std::lower_bound(ends.begin(), ends.end(), places[i],
                                          [&](std::size_t at, int place) { return places[at] < place; });
        if (end != ends.begin()) previous[i] = static_cast<int>(*(end - 1));
        if (end == ends.end())
            ends.push_back(i);
        else
            *end = i;
    }
    for (int i = ends.empty() ? None : static_cast<int>(ends.back()); i != None; i = previous[Index(i)])
        isMoved[Index(i)] = false;
    return isMoved;
}

RulePairing PairRules(const std::vector<Rule>& before, const std::vector<Rule>& after)
{
    return Pairer(before, after).Run();
}

} // namespace rules
