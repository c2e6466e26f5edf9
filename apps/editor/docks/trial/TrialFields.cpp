#include "editor/docks/trial/TrialFields.h"

#include "rules/bill/Formula.h"
#include "rules/match/CellText.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// More bounds than that give no hints any more, which nobody would look through.
constexpr std::size_t MostBounds = 100;

const rules::CategoryFacts& FactsOf(const rules::PricingFacts& facts, const CString& category)
{
    static const rules::CategoryFacts None;
    const auto found = facts.attributes.find(category);
    return found == facts.attributes.end() ? None : found->second;
}

/// What conditions say about one attribute.
struct Said
{
    CString name;
    CStringArray values;
    std::set<rules::Decimal> bounds;
};

/// By first mention in the rules.
class SaidList
{
public:
    SaidList(const rules::SmallCategory& category, const rules::CategoryFacts& facts)
    {
        for (const rules::AttributeFacts& fact : facts)
            m_readers.try_emplace(rules::Normalised(fact.name), fact.valueList);
        for (const rules::Rule& rule : category.rules)
            if (!rule.isDefault)
                for (const rules::Condition& condition : rule.conditions)
                    Add(condition);
    }

    const std::vector<Said>& All() const { return m_said; }
    const rules::NumberReader& ReaderOf(const CString& name) const
    {
        const auto known = m_readers.find(rules::Normalised(name));
        return known == m_readers.end() ? m_plain : known->second;
    }

private:
    void Add(const rules::Condition& condition)
    {
        const CString name = rules::WithoutBlanks(condition.attribute).toString();
        if (name.isEmpty()) return;
        const auto [place, isNew] = m_places.try_emplace(rules::Normalised(name), m_said.size());
        if (isNew) m_said.push_back({name, {}, {}});
        Said& said = m_said[place->second];
        if (condition.isValueForm) {
            const CString value = rules::WithoutBlanks(condition.value).toString();
            if (!value.isEmpty() && m_known.emplace(place->second, value).second) said.values.append(value);
            return;
        }
        for (const CString& bound : {condition.lowerBound, condition.upperBound})
            if (const auto number = ReaderOf(name).Read(bound)) said.bounds.insert(*number);
    }

    std::map<CString, rules::NumberReader> m_readers;
    rules::NumberReader m_plain{{}};
    std::map<CString, std::size_t> m_places;
    std::set<std::pair<std::size_t, CString>> m_known;
    std::vector<Said> m_said;
};

/// Numbers on, below, between and above the bounds.
CStringArray AroundBounds(const std::set<rules::Decimal>& bounds)
{
    if (bounds.empty() || bounds.size() > MostBounds) return {};
    const rules::Decimal two(2);
    const rules::Decimal one(1);
    CStringArray numbers;
    const rules::Decimal& first = *bounds.begin();
    numbers.append((first > rules::Decimal() ? *first.DividedBy(two) : first - one).ToText());
    for (auto bound = bounds.begin(); bound != bounds.end(); ++bound) {
        numbers.append(bound->ToText());
        const auto next = std::next(bound);
        numbers.append((next == bounds.end() ? *bound + one : *(*bound + *next).DividedBy(two)).ToText());
    }
    return numbers;
}

CStringArray ChoicesOf(const Said& said, const CStringArray& valueList, const rules::NumberReader& reader)
{
    CStringArray choices = valueList;
    const bool listsNumbers = std::any_of(valueList.begin(), valueList.end(), [&](const CString& value) {
        return reader.Read(value).has_value();
    });
    std::set<CString> known(choices.begin(), choices.end());
    for (const CString& value : said.values + (listsNumbers ? CStringArray() : AroundBounds(said.bounds)))
        if (known.insert(value).second) choices.append(value);
    return choices;
}

/// The names of columns that quantities rest on, by first use.
class QuantityNames
{
public:
    explicit QuantityNames(const rules::CalculationItems& items) : m_items(items) {}

    void AddFormula(const CString& formula)
    {
        if (!m_formulas.insert(formula).second) return;
        const auto parsed = rules::Formula::Parse(formula);
        if (!parsed) return;
        for (const CString& name : parsed->Names()) {
            const auto item = m_items.find(name);
            if (item != m_items.end() && !item->second.isEmpty())
                AddFormula(item->second);
            else if (!m_names.contains(name))
                m_names.append(name);
        }
    }
    const CStringArray& Names() const { return m_names; }

private:
    const rules::CalculationItems& m_items;
    std::set<CString> m_formulas;
    CStringArray m_names;
};

CStringArray QuantitiesOf(const rules::SmallCategory& category, const rules::PricingFacts& facts)
{
    QuantityNames names(facts.calculationItems);
    for (const rules::Rule& rule : category.rules) {
        if (facts.mode == rules::PricingMode::Quota)
            for (const rules::QuotaItem& quota : rule.quotas)
                names.AddFormula(quota.record.strFormula);
        else
            for (const rules::BillItem& bill : rule.bills) {
                names.AddFormula(bill.record.strFormula);
                for (const rules::QuotaItem& quota : bill.quotas)
                    names.AddFormula(quota.record.strFormula);
            }
    }
    return names.Names();
}

} // namespace

std::vector<TrialField> TrialFieldsOf(const rules::SmallCategory& category,
                                      const rules::CategoryFacts& attributes,
                                      const rules::PricingFacts& facts)
{
    const rules::CategoryFacts& known = FactsOf(facts, category.text);
    const auto factOf = [](const rules::CategoryFacts& all, const CString& name) {
        const auto found = std::find_if(all.begin(), all.end(), [&](const rules::AttributeFacts& one) {
            return rules::Normalised(one.name) == rules::Normalised(name);
        });
        return found == all.end() ? rules::AttributeFacts{} : *found;
    };
    std::vector<TrialField> fields;
    std::set<CString> listed;
    const auto add = [&](TrialField field) {
        if (listed.insert(rules::Normalised(field.name)).second) fields.push_back(std::move(field));
    };
    const SaidList said(category, known);
    for (const Said& one : said.All()) {
        const rules::AttributeFacts fact = factOf(known, one.name);
        add({TrialField::Kind::Tested, one.name, fact.unit,
             ChoicesOf(one, fact.valueList, said.ReaderOf(one.name))});
    }
    for (const CString& name : QuantitiesOf(category, facts))
        add({TrialField::Kind::Quantity, name, factOf(known, name).unit, {}});
    for (const rules::AttributeFacts& fact : attributes)
        add({TrialField::Kind::Offered, fact.name, fact.unit, fact.valueList});
    return fields;
}

} // namespace editor
