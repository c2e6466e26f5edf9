#include "rules/draft/PartNumbers.h"

#include "tree/Children.h"

#include <algorithm>

namespace rules {

namespace {

/// Finds for each part of a rule what the former rule has of it.
template <typename Part>
class Numbering
{
public:
    /// `former` and `counter` must outlive this.
    Numbering(const std::vector<Part>& former, int& counter)
        : m_former(former), m_isTaken(former.size()), m_counter(counter)
    {
    }

    /// Gives the part its id. What the former rule has of it; null for a part that is new.
    const Part* Number(Part& part)
    {
        // A file may have an id twice, or none: what has not changed goes first.
        const Part* same = TakeFirst([&](const Part& known) { return known == part; });
        if (same == nullptr && part.id != 0)
            same = TakeFirst([&](const Part& known) { return known.id == part.id; });
        if (same != nullptr) return same;
        for (const Part& known : m_former) // the file may give the counter too low
            m_counter = std::max(m_counter, known.id);
        part.id = tree::NextId(m_counter);
        return nullptr;
    }

private:
    /// The first one that is right and that no part has taken yet.
    template <typename IsRight>
    const Part* TakeFirst(IsRight isRight)
    {
        for (std::size_t i = 0; i < m_former.size(); ++i)
            if (!m_isTaken[i] && isRight(m_former[i])) {
                m_isTaken[i] = true;
                return &m_former[i];
            }
        return nullptr;
    }

    const std::vector<Part>& m_former;
    std::vector<bool> m_isTaken;
    int& m_counter;
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
