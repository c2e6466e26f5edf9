#pragma once

#include "rules/CompareTesting.h"
#include "rules/RandomRules.h"
#include "rules/draft/Series.h"

#include <set>
#include <vector>

/// Random rules and edits out of small stocks, so that they meet often.
namespace test {

inline const std::vector<CString> Attributes{QStringLiteral("材质"), QStringLiteral("公称直径"),
                                             QStringLiteral("用途")};
inline const std::vector<CString> Values{QStringLiteral("铜管"),       QStringLiteral("15"),
                                         QStringLiteral("<&\"'>\n\t"), QStringLiteral("\uFEFF甲"),
                                         QStringLiteral("𝟓"),          QStringLiteral("")};
inline const std::vector<CString> Numbers{QStringLiteral("01"), QStringLiteral("02"), QStringLiteral("03")};

/// Draws rules and what happens to them.
class RuleDrawing
{
public:
    explicit RuleDrawing(unsigned seed) : m_dice(seed) {}

    Dice& Random() { return m_dice; }

    rules::Condition NewCondition()
    {
        rules::Condition condition =
            m_dice.OneIn(2) ? Value(m_dice.Of(Attributes), QStringLiteral("＝"), m_dice.Of(Values))
                            : Range(m_dice.Of(Attributes), QStringLiteral("＞"), QStringLiteral("15"),
                                    QStringLiteral("≤"), m_dice.Of(Values));
        condition.id = m_dice.OneIn(8) ? 0 : static_cast<int>(m_dice.Below(9));
        return condition;
    }

    rules::QuotaItem NewQuota()
    {
        rules::QuotaItem quota = Quota(m_dice.Of(Numbers), m_dice.Of(Values));
        quota.id = static_cast<int>(m_dice.Below(9));
        quota.record.strAnnex = m_dice.Of(Values);
        return quota;
    }

    rules::BillItem NewBill()
    {
        rules::BillItem bill = Bill(m_dice.Of(Numbers), m_dice.Of(Values));
        bill.id = static_cast<int>(m_dice.Below(9));
        for (std::size_t i = m_dice.Below(3); i > 0; --i)
            bill.quotas.push_back(NewQuota());
        return bill;
    }

    /// With ids that are none of its own.
    rules::Rule NewRule()
    {
        rules::Rule rule;
        for (std::size_t i = m_dice.Below(4); i > 0; --i)
            rule.conditions.push_back(NewCondition());
        for (std::size_t i = m_dice.Below(3); i > 0; --i)
            rule.bills.push_back(NewBill());
        for (std::size_t i = m_dice.Below(3); i > 0; --i)
            rule.quotas.push_back(NewQuota());
        return rule;
    }

    void Change(rules::Rule& rule)
    {
        const auto changeOne = [&](auto& parts, auto made) {
            if (!parts.empty() && m_dice.OneIn(3)) parts.erase(parts.begin());
            if (!parts.empty() && m_dice.OneIn(3)) parts.push_back(parts[m_dice.Below(parts.size())]);
            if (m_dice.OneIn(3)) parts.insert(parts.begin(), made);
            if (!parts.empty() && m_dice.OneIn(3)) std::swap(parts.front(), parts.back());
        };
        changeOne(rule.conditions, NewCondition());
        changeOne(rule.bills, NewBill());
        changeOne(rule.quotas, NewQuota());
        if (!rule.conditions.empty() && m_dice.OneIn(2)) rule.conditions.back().value = m_dice.Of(Values);
        if (!rule.bills.empty()) changeOne(rule.bills.front().quotas, NewQuota());
    }

    std::set<std::size_t> Some(std::size_t size)
    {
        std::set<std::size_t> positions;
        for (std::size_t i = m_dice.Below(5); i > 0; --i)
            positions.insert(m_dice.Below(size));
        return positions;
    }

    rules::SeriesPlan Plan()
    {
        using enum rules::SeriesForm;
        return {m_dice.Of(Attributes),
                {QStringLiteral("15"), QStringLiteral("20.0"), QStringLiteral("100")},
                m_dice.Of(std::vector{Values, UpperClosed, LowerClosed}),
                m_dice.OneIn(2),
                m_dice.OneIn(2)};
    }

private:
    Dice m_dice;
};

} // namespace test
