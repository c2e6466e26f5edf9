#include "rules/bill/BillBuilder.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

bool IsSameLibrary(const CString& a, const CString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0; // as the editor compares them
}

CString TextOf(const Condition& condition)
{
    if (condition.isValueForm) {
        const CString value = WithoutBlanks(condition.value).toString();
        return condition.equalOperator == u"≠"_s ? u'≠' + value : value;
    }
    CStringArray bounds;
    if (!condition.lowerBound.isEmpty()) bounds.append(condition.lowerOperator + condition.lowerBound);
    if (!condition.upperBound.isEmpty()) bounds.append(condition.upperOperator + condition.upperBound);
    return bounds.join(u'，');
}

/// What the conditions of a rule say of each attribute, in their order. The default rule says nothing, and
/// neither does a range without bounds.
std::vector<Feature> FeaturesOf(const Rule& rule)
{
    std::vector<Feature> features;
    if (rule.isDefault) return features;
    for (const Condition& condition : rule.conditions) {
        const CString text = TextOf(condition);
        if (text.isEmpty()) continue;
        const CString name = WithoutBlanks(condition.attribute).toString();
        const auto known = std::find_if(features.begin(), features.end(),
                                        [&](const Feature& feature) { return feature.attribute == name; });
        if (known == features.end())
            features.push_back({name, text});
        else
            known->text += u'，' + text;
    }
    return features;
}

BillRow RowFor(const QdStruct& record, std::vector<Feature> features)
{
    BillRow row;
    row.number = record.strQdId;
    row.name = record.strName;
    row.unit = record.strUnit;
    row.features = std::move(features);
    row.withFittings = record.strAnnex == u"是"_s;
    return row;
}

BillRow RowFor(const DeStruct& record)
{
    BillRow row;
    row.number = record.strDeId;
    row.name = record.strName;
    row.unit = record.strUnit;
    row.withFittings = record.strAnnex == u"是"_s;
    return row;
}

/// The quota row of that number, name and unit below a bill row, made when it is new.
std::uint32_t QuotaRowOf(std::vector<BillRow>& quotas, const BillRow& row)
{
    const auto same = std::find_if(quotas.begin(), quotas.end(), [&](const BillRow& known) {
        return known.number == row.number && known.name == row.name && known.unit == row.unit;
    });
    if (same != quotas.end()) {
        same->withFittings = same->withFittings || row.withFittings;
        return static_cast<std::uint32_t>(same - quotas.begin());
    }
    quotas.push_back(row);
    return static_cast<std::uint32_t>(quotas.size() - 1);
}

void FinishRow(BillRow& row)
{
    if (row.missing < row.components) row.quantity = UnitOfMeasure::Of(row.unit).Format(row.sum);
    for (BillRow& quota : row.quotas)
        FinishRow(quota);
}

} // namespace

CString BillRow::FeatureText() const
{
    CStringArray lines;
    for (const Feature& feature : features)
        lines.append(u"%1.%2：%3"_s.arg(lines.size() + 1).arg(feature.attribute, feature.text));
    return lines.join(u'\n');
}

/// An item of a rule that is priced, with its place in the bill.
struct BillBuilder::Item
{
    std::uint32_t row = 0;
    std::size_t formula = 0;
    std::vector<Item> quotas;
};

/// One category of the table: its rules compiled, and what has been met so far.
struct BillBuilder::CategoryState
{
    struct Prepared
    {
        bool isReady = false;
        std::vector<Item> items;
        int ofOtherLibraries = 0;
    };

    CategoryState(SmallCategoryPtr found, const PricingFacts& facts, const CStringArray& headers)
        : category(std::move(found)), known(FactsOf(facts, category->text)),
          matching(std::make_shared<const CategoryMatcher>(category, known)),
          columns(matching.Matcher().ColumnsFor(headers)), values(columns.size()),
          quantities(headers, known, facts.calculationItems), rules(category->rules.size())
    {
    }

    static const CategoryFacts& FactsOf(const PricingFacts& facts, const CString& text)
    {
        static const CategoryFacts None;
        const auto found = facts.attributes.find(text);
        return found == facts.attributes.end() ? None : found->second;
    }

    SmallCategoryPtr category;
    const CategoryFacts& known;
    Matching matching;
    std::vector<std::optional<std::size_t>> columns;
    std::vector<Matching::Value> values; ///< of the component at hand
    QuantityTable quantities;
    std::vector<Prepared> rules;
};

BillBuilder::BillBuilder(ConfigurationPtr configuration, PricingFacts facts, CStringArray headers)
    : m_configuration(std::move(configuration)), m_facts(std::move(facts)), m_headers(std::move(headers))
{
}

BillBuilder::~BillBuilder() = default;

ComponentResult BillBuilder::Add(const TakeoffComponent& component)
{
    ++m_bill.totals.in;
    ComponentResult result;
    if (!component.id.isEmpty() && !m_ids.insert(component.id).second)
        result.refusal = Refusal::IdTwice;
    else
        Price(component, result);
    switch (result.outcome) {
    case Outcome::Priced:
        ++m_bill.totals.priced;
        break;
    case Outcome::OnDefault:
        ++m_bill.totals.onDefault;
        break;
    case Outcome::Refused:
        ++m_bill.totals.refused;
        break;
    }
    return result;
}

void BillBuilder::Price(const TakeoffComponent& component, ComponentResult& result)
{
    CategoryState* const state = StateOf(component.category);
    if (state == nullptr) {
        result.refusal = Refusal::UnknownCategory;
        return;
    }
    result.category = state->category;
    result.rule = Match(*state, component);
    if (result.rule == NoRule) {
        result.refusal = Refusal::NoRuleApplies;
        return;
    }
    const std::vector<Item>& items = ItemsOf(*state, result.rule);
    result.itemsOfOtherLibraries = state->rules[static_cast<std::size_t>(result.rule)].ofOtherLibraries;
    const bool isDefault = state->category->rules[static_cast<std::size_t>(result.rule)].isDefault;
    if (items.empty() && !isDefault) {
        result.refusal = result.itemsOfOtherLibraries > 0 ? Refusal::OtherLibraries : Refusal::NoItems;
        return;
    }
    result.outcome = isDefault ? Outcome::OnDefault : Outcome::Priced;
    for (const Item& item : items) {
        ItemLine& line = result.lines.emplace_back();
        line.row = item.row;
        line.quantity = state->quantities.Evaluate(item.formula, component.cells);
        AddTo(m_bill.rows[item.row], line.quantity);
        for (const Item& quota : item.quotas) {
            Quantity quantity = state->quantities.Evaluate(quota.formula, component.cells);
            AddTo(m_bill.rows[item.row].quotas[quota.row], quantity);
            line.quotas.push_back({quota.row, std::move(quantity), {}});
        }
    }
}

RuleIndex BillBuilder::Match(CategoryState& state, const TakeoffComponent& component) const
{
    const std::vector<CategoryMatcher::Attribute>& attributes = state.matching.Matcher().Attributes();
    for (std::size_t i = 0; i < attributes.size(); ++i) {
        if (attributes[i].isOwnName)
            state.values[i] = state.matching.Resolve(i, component.name);
        else
            state.values[i] = state.columns[i] ? state.matching.Resolve(i, component.cells[*state.columns[i]])
                                               : Matching::Missing;
    }
    return state.matching.Match(state.values);
}

BillBuilder::CategoryState* BillBuilder::StateOf(const CString& category)
{
    const auto known = m_categories.find(category);
    if (known != m_categories.end()) return known->second.get();
    SmallCategoryPtr found = m_configuration->Find(category);
    std::unique_ptr<CategoryState> state;
    if (found) state = std::make_unique<CategoryState>(std::move(found), m_facts, m_headers);
    return m_categories.emplace(category, std::move(state)).first->second.get();
}

/// The items of a rule that are priced, found when it applies for the first time, so that the bill has no
/// rows of rules that never apply.
const std::vector<BillBuilder::Item>& BillBuilder::ItemsOf(CategoryState& state, RuleIndex rule)
{
    const auto index = static_cast<std::size_t>(rule);
    CategoryState::Prepared& prepared = state.rules[index];
    if (!prepared.isReady) {
        prepared.items = PrepareItems(state, state.category->rules[index]);
        prepared.isReady = true;
    }
    return prepared.items;
}

std::vector<BillBuilder::Item> BillBuilder::PrepareItems(CategoryState& state, const Rule& rule)
{
    std::vector<Item> items;
    int& others =
        state.rules[static_cast<std::size_t>(&rule - state.category->rules.data())].ofOtherLibraries;
    const auto isPriced = [&](const CString& library, const CString& inUse) {
        if (IsSameLibrary(library, inUse)) return true;
        ++others;
        return false;
    };
    if (m_facts.mode == PricingMode::Quota) {
        for (const QuotaItem& quota : rule.quotas)
            if (isPriced(quota.record.strDeCode, m_facts.quotaLibrary))
                items.push_back(
                    {RowOf(RowFor(quota.record)), state.quantities.Add(quota.record.strFormula), {}});
        return items;
    }
    for (const BillItem& bill : rule.bills) {
        if (!isPriced(bill.record.strQdCode, m_facts.billLibrary)) continue;
        Item item{
            RowOf(RowFor(bill.record, FeaturesOf(rule))), state.quantities.Add(bill.record.strFormula), {}};
        for (const QuotaItem& quota : bill.quotas)
            if (isPriced(quota.record.strDeCode, m_facts.quotaLibrary))
                item.quotas.push_back({QuotaRowOf(m_bill.rows[item.row].quotas, RowFor(quota.record)),
                                       state.quantities.Add(quota.record.strFormula),
                                       {}});
        items.push_back(std::move(item));
    }
    return items;
}

/// The row of the same number, name, features and unit, made when it is new.
std::uint32_t BillBuilder::RowOf(const BillRow& row)
{
    const auto next = static_cast<std::uint32_t>(m_bill.rows.size());
    const auto [place, isNew] = m_rowByKey.try_emplace({row.number, row.name, row.features, row.unit}, next);
    if (isNew)
        m_bill.rows.push_back(row);
    else if (row.withFittings)
        m_bill.rows[place->second].withFittings = true;
    return place->second;
}

void BillBuilder::AddTo(BillRow& row, const Quantity& quantity)
{
    ++row.components;
    if (quantity.IsKnown())
        row.sum += quantity.value;
    else
        ++row.missing;
}

Bill BillBuilder::Finish() const
{
    const Totals& totals = m_bill.totals;
    if (totals.in != totals.priced + totals.onDefault + totals.refused)
        throw std::logic_error("components are lost in pricing");
    Bill bill = m_bill;
    for (BillRow& row : bill.rows)
        FinishRow(row);
    for (const auto& [key, row] : m_rowByKey)
        bill.order.push_back(row); // the map is sorted as a bill lists its rows
    for (std::size_t i = 1; i < bill.order.size(); ++i) {
        BillRow& before = bill.rows[bill.order[i - 1]];
        BillRow& here = bill.rows[bill.order[i]];
        if (before.number == here.number) before.numberRepeated = here.numberRepeated = true;
    }
    return bill;
}

} // namespace rules
