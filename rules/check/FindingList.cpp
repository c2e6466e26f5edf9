#include "rules/check/FindingList.h"

using namespace Qt::StringLiterals;

namespace rules {

Finding& FindingList::Add(FindingCode code, const CString& category, const CString& text)
{
    return m_findings.emplace_back(Finding{.code = code, .category = category, .text = text});
}

Finding& FindingList::Add(FindingCode code, const SmallCategory& category, std::size_t rule,
                          const CString& text)
{
    Finding& finding = Add(code, category.text, text);
    finding.position = static_cast<int>(rule) + 1;
    finding.ruleId = category.rules[rule].id;
    return finding;
}

bool IsReached(const SmallCategory& category, std::size_t rule)
{
    return CountOfId(category.rules, category.rules[rule].id) == 1;
}

CString RulesText(const std::vector<std::size_t>& rules)
{
    constexpr std::size_t Most = 6;
    CStringArray positions;
    for (std::size_t i = 0; i < rules.size() && i < Most; ++i)
        positions.append(QString::number(rules[i] + 1));
    const CString text = u"第 %1 条"_s.arg(positions.join(u"、"_s));
    return rules.size() > Most ? text + u"等 %1 条"_s.arg(rules.size()) : text;
}

std::vector<int> PositionsOf(const std::vector<std::size_t>& rules)
{
    std::vector<int> positions;
    positions.reserve(rules.size());
    for (const std::size_t rule : rules)
        positions.push_back(static_cast<int>(rule) + 1);
    return positions;
}

} // namespace rules
