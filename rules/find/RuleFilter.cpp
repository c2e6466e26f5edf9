#include "rules/find/RuleFilter.h"

#include "rules/find/FoldedText.h"
#include "rules/find/ValueReadings.h"

#include <QtCore/QStringMatcher>

#include <algorithm>
#include <numeric>
#include <set>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

/// Stands between the texts of a rule. Words have no blanks, so none reaches over it.
constexpr QChar Separator = u'\n';

/// All that conditions are told apart by.
CStringArray KeyOf(const Condition& condition)
{
    return {condition.attribute,     condition.isValueForm ? u"1"_s : CString(),
            condition.equalOperator, condition.value,
            condition.lowerOperator, condition.lowerBound,
            condition.upperOperator, condition.upperBound};
}

template <typename Do>
void ForEachRule(const Configuration& configuration, Do act)
{
    for (const Specialty& specialty : configuration.Specialties())
        for (const BigCategory& big : specialty.bigCategories)
            for (const SmallCategoryPtr& small : big.smallCategories)
                for (const Rule& rule : small->rules)
                    act(rule);
}

} // namespace

RuleTexts::RuleTexts(SmallCategoryPtr category, const CategoryFacts& facts) : m_category(std::move(category))
{
    for (const AttributeFacts& fact : facts)
        m_numbers.try_emplace(Normalised(fact.name), fact.valueList);
    std::map<CString, KnownPlaces> places;
    const std::vector<Rule>& rules = m_category->rules;
    m_ends.reserve(rules.size());
    for (std::size_t i = 0; i < rules.size(); ++i) {
        AddText(rules[i]);
        m_ends.push_back(m_text.size());
        // Those of a default rule are of no account.
        if (!rules[i].isDefault) AddConditions(static_cast<std::uint32_t>(i), places);
    }
}

void RuleTexts::AddText(const Rule& rule)
{
    const auto add = [this](const CString& text) {
        AppendFolded(m_text, text);
        m_text.append(Separator);
    };
    if (rule.isDefault)
        add(rule.Text());
    else
        for (const Condition& condition : rule.conditions)
            add(condition.Text());
    const auto addQuotas = [&](const std::vector<QuotaItem>& quotas) {
        for (const QuotaItem& quota : quotas) {
            add(quota.record.strDeId);
            add(quota.record.strName);
        }
    };
    for (const BillItem& bill : rule.bills) {
        add(bill.record.strQdId);
        add(bill.record.strName);
        addQuotas(bill.quotas);
    }
    addQuotas(rule.quotas);
}

void RuleTexts::AddConditions(std::uint32_t index, std::map<CString, KnownPlaces>& places)
{
    for (const Condition& condition : m_category->rules[index].conditions) {
        const CString attribute = Folded(condition.attribute);
        std::vector<Known>& known = m_known[attribute];
        const auto [place, isNew] = places[attribute].try_emplace(KeyOf(condition), known.size());
        if (isNew) {
            const auto numbers = m_numbers.try_emplace(Normalised(condition.attribute), CStringArray()).first;
            known.push_back({&condition, &numbers->second, Folded(condition.value), {}});
        }
        std::vector<std::uint32_t>& rules = known[place->second].rules;
        if (rules.empty() || rules.back() != index) rules.push_back(index);
    }
}

QStringView RuleTexts::TextOf(std::size_t rule) const
{
    const qsizetype begin = rule == 0 ? 0 : m_ends[rule - 1];
    return QStringView(m_text).sliced(begin, m_ends[rule] - begin);
}

std::vector<std::size_t> RuleTexts::Find(const RuleQuery& query) const
{
    std::vector<std::size_t> found;
    const auto keepIf = [&](auto isFound) {
        std::erase_if(found, [&](std::size_t rule) { return !isFound(rule); });
    };
    if (query.m_words.isEmpty()) {
        found.resize(m_ends.size());
        std::iota(found.begin(), found.end(), std::size_t{0});
    } else {
        found = FindWord(query.m_words.front());
    }
    for (const CString& word : query.m_words.sliced(std::min<qsizetype>(1, query.m_words.size())))
        keepIf([&, matcher = QStringMatcher(word)](std::size_t rule) {
            return matcher.indexIn(TextOf(rule)) >= 0;
        });
    for (const RuleQuery::AttributeValue& wanted : query.m_values)
        keepIf([holds = FindValue(wanted)](std::size_t rule) { return bool(holds[rule]); });
    return found;
}

std::vector<std::size_t> RuleTexts::FindWord(const CString& word) const
{
    std::vector<std::size_t> found;
    const QStringView text(m_text);
    const QStringMatcher matcher(word);
    const auto next = [&](qsizetype from) {
        return word.size() == 1 ? text.indexOf(word.front(), from) : matcher.indexIn(text, from);
    };
    for (qsizetype at = next(0); at >= 0; at = next(m_ends[found.back()])) {
        const auto end = std::upper_bound(m_ends.begin(), m_ends.end(), at);
        found.push_back(static_cast<std::size_t>(end - m_ends.begin()));
    }
    return found;
}

std::vector<bool> RuleTexts::FindValue(const RuleQuery::AttributeValue& wanted) const
{
    std::vector<bool> holds(m_ends.size());
    const auto known = m_known.find(wanted.attribute);
    if (known == m_known.end()) return holds;
    std::map<const NumberReader*, ValueReadings> readings;
    for (const Known& one : known->second) {
        if (!wanted.value.isEmpty()) {
            const auto reading = readings.try_emplace(one.numbers, wanted.value, *one.numbers).first;
            if (!reading->second.Finds(*one.condition, one.value)) continue;
        }
        for (const std::uint32_t rule : one.rules)
            holds[rule] = true;
    }
    return holds;
}

CStringArray AttributeNames(const Configuration& configuration, const CatalogueFacts& facts)
{
    CStringArray names;
    std::set<CString> met;
    std::set<CString> known;
    const auto add = [&](const CString& name) {
        if (!met.insert(name).second) return;
        const CString normalised = Normalised(name);
        if (!normalised.isEmpty() && known.insert(normalised).second) names.append(normalised);
    };
    for (const auto& [category, attributes] : facts)
        for (const AttributeFacts& fact : attributes)
            add(fact.name);
    ForEachRule(configuration, [&](const Rule& rule) {
        for (const Condition& condition : rule.conditions)
            add(condition.attribute);
    });
    return names;
}

} // namespace rules
