#include "rules/draft/PartNumbers.h"

#include "tree/Children.h"

#include <algorithm>
#include <set>

namespace rules {

namespace {

template <typename Part>
class Numbering
{
public:
    /// `former` and `counter` must outlive this.
    Numbering(const std::vector<Part>& former, int& counter) : m_former(former), m_counter(counter)
    {
        for (const Part& part : former)
            m_ids.insert(part.id);
    }

    /// Gives the part its id. What the former rule has of it; null for a part that is new.
    const Part* Number(Part& part)
    {
        const auto same = part.id != 0 ? FindId(part.id) : FindEqual(part);
        const auto id = m_ids.find(part.id);
        if (same != m_former.end() && id != m_ids.end()) {
            m_ids.erase(id);
            return &*same;
        }
        // A file may give its counters too low.
        for (const Part& known : m_former)
            m_counter = std::max(m_counter, known.id);
        part.id = tree::NextId(m_counter);
        return nullptr;
    }

private:
    auto FindId(int id) const
    {
        return std::find_if(m_former.begin(), m_former.end(),
                            [id](const Part& known) { return known.id == id; });
    }
    auto FindEqual(const Part& part) const { return std::find(m_former.begin(), m_former.end(), part); }

    const std::vector<Part>& m_former;
    int& m_counter;
    std::multiset<int> m_ids; ///< those that no part has kept yet; a file may have one twice
};

template <typename Part>
void NumberAll(std::vector<Part>& parts, const std::vector<Part>& former, int& counter)
{
    Numbering numbering(former, counter);
    for (Part& part : parts)
        numbering.Number(part);
}

} // namespace

void NumberAnew(Rule& rule)
{
    NumberParts(rule, Rule());
}

void NumberParts(Rule& rule, const Rule& former)
{
    static const std::vector<QuotaItem> None;
    rule.counters = former.counters;
    NumberAll(rule.conditions, former.conditions, rule.counters.condition);
    Numbering bills(former.bills, rule.counters.bill);
    for (BillItem& bill : rule.bills) {
        const BillItem* const same = bills.Number(bill);
        int counter = 0; // a bill item has none of its own: its highest id is what counts
        NumberAll(bill.quotas, same != nullptr ? same->quotas : None, counter);
    }
    NumberAll(rule.quotas, former.quotas, rule.counters.quota);
}

} // namespace rules
