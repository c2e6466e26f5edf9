#include "rules/find/RuleFilter.h"

#include "rules/find/FoldedText.h"
#include "rules/find/ValueReadings.h"

#include <QtCore/QHashFunctions>
#include <QtCore/QStringMatcher>

#include <algorithm>
#include <numeric>
#include <set>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace rules {

namespace {

/// Stands between the texts of a rule. Words have no blanks, so none reaches over it.
constexpr QChar Separator = u'\n';

/// All that a condition says, by which it is told apart from others.
auto ContentOf(const Condition& condition)
{
    return std::tie(condition.isValueForm, condition.attribute, condition.value, condition.lowerBound,
                    condition.upperBound, condition.equalOperator, condition.lowerOperator,
                    condition.upperOperator);
}

struct ContentHash
{
    std::size_t operator()(const Condition* condition) const noexcept
    {
        return std::apply([](const auto&... parts) { return qHashMulti(0, parts...); },
                          ContentOf(*condition));
    }
};

struct ContentEqual
{
    bool operator()(const Condition* a, const Condition* b) const { return ContentOf(*a) == ContentOf(*b); }
};

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

/// Fills one. Rules have few conditions that are not those of other rules, so each is looked at once.
class RuleTexts::Maker
{
public:
    Maker(RuleTexts& made, const CategoryFacts& facts) : m_made(made)
    {
        for (const AttributeFacts& fact : facts)
            m_numbers.try_emplace(Normalised(fact.name),
                                  std::make_shared<const NumberReader>(fact.valueList));
    }

    void Add(const Rule& rule, std::uint32_t index)
    {
        if (rule.isDefault)
            Add(rule.Text()); // its conditions are of no account
        else
            for (const Condition& condition : rule.conditions)
                Add(condition, index);
        for (const BillItem& bill : rule.bills) {
            Add(bill.record.strQdId);
            Add(bill.record.strName);
            Add(bill.quotas);
        }
        Add(rule.quotas);
        m_made.m_ends.push_back(m_made.m_text.size());
    }

private:
    /// Where the condition is among those that are known, and its folded text.
    struct Place
    {
        std::vector<Known>* known = nullptr;
        std::size_t index = 0;
        CString text;
    };

    void Add(const CString& text)
    {
        AppendFolded(m_made.m_text, text);
        m_made.m_text.append(Separator);
    }

    void Add(const std::vector<QuotaItem>& quotas)
    {
        for (const QuotaItem& quota : quotas) {
            Add(quota.record.strDeId);
            Add(quota.record.strName);
        }
    }

    void Add(const Condition& condition, std::uint32_t index)
    {
        const Place& place = PlaceOf(condition);
        m_made.m_text.append(place.text).append(Separator);
        std::vector<std::uint32_t>& rules = (*place.known)[place.index].rules;
        if (rules.empty() || rules.back() != index) rules.push_back(index);
    }

    const Place& PlaceOf(const Condition& condition)
    {
        Place& place = m_places[&condition];
        if (place.known != nullptr) return place;
        place.known = &m_made.m_known[Folded(condition.attribute)];
        place.index = place.known->size();
        AppendFolded(place.text, condition.Text());
        auto& numbers = m_numbers[Normalised(condition.attribute)];
        if (!numbers) numbers = std::make_shared<const NumberReader>(CStringArray());
        place.known->push_back({&condition, numbers, Folded(condition.value), {}});
        return place;
    }

    RuleTexts& m_made;
    std::map<CString, std::shared_ptr<const NumberReader>> m_numbers; ///< by the attribute's name
    std::unordered_map<const Condition*, Place, ContentHash, ContentEqual> m_places;
};

RuleTexts::RuleTexts(SmallCategoryPtr category, const CategoryFacts& facts) : m_category(std::move(category))
{
    m_ends.reserve(m_category->rules.size());
    Maker maker(*this, facts);
    for (const Rule& rule : m_category->rules)
        maker.Add(rule, static_cast<std::uint32_t>(m_ends.size()));
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
            const auto reading = readings.try_emplace(one.numbers.get(), wanted.value, *one.numbers).first;
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
