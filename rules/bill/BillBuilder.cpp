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

/// What each condition of a rule says, in their order. The default rule says nothing, and neither does a
/// range without bounds.
std::vector<Feature> SaidBy(const Rule& rule)
{
    std::vector<Feature> said;
    if (rule.isDefault) return said;
    for (const Condition& condition : rule.conditions) {
        const CString text = TextOf(condition);
        if (!text.isEmpty()) said.push_back({WithoutBlanks(condition.attribute).toString(), text});
    }
    return said;
}

/// What conditions say, with what they say of one attribute as one feature.
std::vector<Feature> Joined(const std::vector<Feature>& said)
{
    std::vector<Feature> features;
    for (const Feature& one : said) {
        const auto known = std::find_if(features.begin(), features.end(), [&](const Feature& feature) {
            return feature.attribute == one.attribute;
        });
        if (known == features.end())
            features.push_back(one);
        else
            known->text += u'，' + one.text;
    }
    return features;
}

BillRow RowFor(const QdStruct& record)
{
    BillRow row;
    row.number = record.strQdId;
    row.name = record.strName;
    row.unit = record.strUnit;
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

/// The items of one rule for one group.
struct BillBuilder::PreparedRule
{
    std::vector<Item> items;
    int ofOtherLibraries = 0;
};

/// One category of the table: its rules compiled, and what has been met so far.
struct BillBuilder::CategoryState
{
    /// An attribute that conditions look at, as far as remarks on its cells need it.
    struct ValueList
    {
        CStringArray values;
        bool hasNumbers = false;
    };

    CategoryState(SmallCategoryPtr found, const PricingFacts& facts, const CStringArray& headers)
        : category(std::move(found)), known(FactsOf(facts, category->text)),
          matching(std::make_shared<const CategoryMatcher>(category, known)),
          columns(matching.Matcher().ColumnsFor(headers)), values(columns.size()),
          quantities(headers, known, facts.calculationItems), rules(category->rules.size())
    {
        for (const CategoryMatcher::Attribute& attribute : matching.Matcher().Attributes())
            lists.push_back(ListOf(attribute.name));
    }

    ValueList ListOf(const CString& attribute) const
    {
        const CString name = Normalised(attribute);
        const auto fact = std::find_if(known.begin(), known.end(), [&](const AttributeFacts& one) {
            return Normalised(one.name) == name;
        });
        if (fact == known.end()) return {};
        const bool hasNumbers =
            std::any_of(fact->valueList.begin(), fact->valueList.end(),
                        [](const CString& value) { return PlainNumber(value).has_value(); });
        return {fact->valueList, hasNumbers};
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
    std::vector<ValueList> lists; ///< beside the attributes of the matcher
    std::vector<std::unordered_map<std::uint32_t, PreparedRule>> rules; ///< by rule and group
};

BillBuilder::BillBuilder(ConfigurationPtr configuration, PricingFacts facts, CStringArray headers,
                         std::vector<std::size_t> groupBy)
    : m_configuration(std::move(configuration)), m_facts(std::move(facts)), m_headers(std::move(headers)),
      m_groupBy(std::move(groupBy))
{
}

BillBuilder::~BillBuilder() = default;

ComponentResult BillBuilder::Add(const TakeoffComponent& component)
{
    ComponentResult result;
    Add(component, result);
    return result;
}

void BillBuilder::Add(const TakeoffComponent& component, ComponentResult& result)
{
    ++m_bill.totals.in;
    result.outcome = Outcome::Refused;
    result.refusal = Refusal::None;
    result.category.reset();
    result.rule = NoRule;
    result.remarks.clear();
    result.itemsOfOtherLibraries = 0;
    if (!component.id.isEmpty() && !m_ids->IsNew(component.id))
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
        result.lines.clear();
        break;
    }
}

void BillBuilder::Price(const TakeoffComponent& component, ComponentResult& result)
{
    CategoryState* const state = StateOf(component.category);
    if (state == nullptr) {
        result.refusal = Refusal::UnknownCategory;
        return;
    }
    result.category = state->category;
    result.rule = Match(*state, component, result.remarks);
    if (result.rule == NoRule) {
        result.refusal = Refusal::NoRuleApplies;
        return;
    }
    const PreparedRule& prepared = ItemsOf(*state, result.rule, GroupOf(component));
    const std::vector<Item>& items = prepared.items;
    result.itemsOfOtherLibraries = prepared.ofOtherLibraries;
    const bool isDefault = state->category->rules[static_cast<std::size_t>(result.rule)].isDefault;
    if (items.empty() && !isDefault) {
        result.refusal = result.itemsOfOtherLibraries > 0 ? Refusal::OtherLibraries : Refusal::NoItems;
        return;
    }
    result.outcome = isDefault ? Outcome::OnDefault : Outcome::Priced;
    state->quantities.Begin(component.cells);
    result.lines.resize(items.size());
    for (std::size_t i = 0; i < items.size(); ++i)
        Put(items[i], state->quantities, result.lines[i]);
    for (Remark& remark : state->quantities.TakeRemarks())
        AddRemark(result.remarks, std::move(remark));
}

/// Adds an item of a component, with the quota items below it, to the bill and to what becomes of the
/// component.
void BillBuilder::Put(const Item& item, QuantityTable& quantities, ItemLine& line)
{
    BillRow& row = m_bill.rows[item.row];
    line.row = item.row;
    line.quantity = quantities.Of(item.formula);
    AddTo(row, line.quantity);
    line.quotas.resize(item.quotas.size());
    for (std::size_t i = 0; i < item.quotas.size(); ++i) {
        const Item& quota = item.quotas[i];
        line.quotas[i].row = quota.row;
        line.quotas[i].quantity = quantities.Of(quota.formula);
        AddTo(row.quotas[quota.row], line.quotas[i].quantity);
    }
}

std::optional<Trace> BillBuilder::Explain(const TakeoffComponent& component)
{
    const CategoryState* const state = StateOf(component.category);
    if (state == nullptr) return std::nullopt;
    const std::vector<CategoryMatcher::Attribute>& attributes = state->matching.Matcher().Attributes();
    std::vector<Cell> cells;
    for (std::size_t i = 0; i < attributes.size(); ++i) {
        if (attributes[i].isOwnName)
            cells.emplace_back(component.name.toString());
        else
            cells.push_back(state->columns[i] ? Cell(component.cells[*state->columns[i]].toString())
                                              : Cell());
    }
    return rules::Explain(state->matching.Matcher(), cells);
}

/// The rule that applies, and what there is to tell of the cells that conditions look at.
RuleIndex BillBuilder::Match(CategoryState& state, const TakeoffComponent& component,
                             std::vector<Remark>& remarks)
{
    const std::vector<CategoryMatcher::Attribute>& attributes = state.matching.Matcher().Attributes();
    for (std::size_t i = 0; i < attributes.size(); ++i) {
        if (attributes[i].isOwnName)
            state.values[i] = state.matching.Resolve(i, component.name);
        else if (state.columns[i]) {
            const QStringView cell = component.cells[*state.columns[i]];
            state.values[i] = state.matching.Resolve(i, cell);
            RemarkOnCell(attributes[i].name, cell, state.lists[i].values, state.lists[i].hasNumbers, remarks);
        } else
            state.values[i] = Matching::Missing;
    }
    return state.matching.Match(state.values);
}

BillBuilder::CategoryState* BillBuilder::StateOf(QStringView category)
{
    const auto known = m_categories.find(category);
    if (known != m_categories.end()) return known->second.get();
    SmallCategoryPtr found = m_configuration->Find(category.toString());
    std::unique_ptr<CategoryState> state;
    if (found) state = std::make_unique<CategoryState>(std::move(found), m_facts, m_headers);
    return m_categories.emplace(category.toString(), std::move(state)).first->second.get();
}

/// The items of a rule that are priced, found when it applies for the first time, so that the bill has no
/// rows of rules that never apply.
const BillBuilder::PreparedRule& BillBuilder::ItemsOf(CategoryState& state, RuleIndex rule,
                                                      std::uint32_t group)
{
    const auto index = static_cast<std::size_t>(rule);
    const auto known = state.rules[index].find(group);
    if (known != state.rules[index].end()) return known->second;
    PreparedRule prepared = PrepareItems(state, state.category->rules[index], group);
    return state.rules[index].emplace(group, std::move(prepared)).first->second;
}

/// The number of the component's values in the columns by which the bill is divided.
std::uint32_t BillBuilder::GroupOf(const TakeoffComponent& component)
{
    if (m_groupBy.empty() && !m_groups.empty()) return 0; // all are of one group
    std::vector<CString> cells;
    for (const std::size_t column : m_groupBy)
        cells.push_back(WithoutBlanks(component.cells[column]).toString());
    const auto next = static_cast<std::uint32_t>(m_groups.size());
    const auto [place, isNew] = m_groupByCells.try_emplace(std::move(cells), next);
    if (isNew) m_groups.push_back(place->first);
    return place->second;
}

BillBuilder::PreparedRule BillBuilder::PrepareItems(CategoryState& state, const Rule& rule,
                                                    std::uint32_t group)
{
    PreparedRule prepared;
    std::vector<Item>& items = prepared.items;
    const auto isPriced = [&](const CString& library, const CString& inUse) {
        if (IsSameLibrary(library, inUse)) return true;
        ++prepared.ofOtherLibraries;
        return false;
    };
    if (m_facts.mode == PricingMode::Quota) {
        for (const QuotaItem& quota : rule.quotas)
            if (isPriced(quota.record.strDeCode, m_facts.quotaLibrary))
                items.push_back({RowOf(RowFor(quota.record), state, group, rule),
                                 state.quantities.Add(quota.record.strFormula),
                                 {}});
        return prepared;
    }
    for (const BillItem& bill : rule.bills) {
        if (!isPriced(bill.record.strQdCode, m_facts.billLibrary)) continue;
        Item item{
            RowOf(RowFor(bill.record), state, group, rule), state.quantities.Add(bill.record.strFormula), {}};
        for (const QuotaItem& quota : bill.quotas)
            if (isPriced(quota.record.strDeCode, m_facts.quotaLibrary))
                item.quotas.push_back({QuotaRowOf(m_bill.rows[item.row].quotas, RowFor(quota.record)),
                                       state.quantities.Add(quota.record.strFormula),
                                       {}});
        items.push_back(std::move(item));
    }
    return prepared;
}

/// The row of the same number, name and unit in the group and the specialty, made when it is new. What it
/// says becomes what all its rules say.
std::uint32_t BillBuilder::RowOf(BillRow row, const CategoryState& state, std::uint32_t group,
                                 const Rule& rule)
{
    row.group = m_groups[group];
    row.specialty = state.category->text.section(u'\\', 0, 0);
    const std::vector<Feature> said =
        m_facts.mode == PricingMode::Bill ? SaidBy(rule) : std::vector<Feature>();
    const auto next = static_cast<std::uint32_t>(m_bill.rows.size());
    const auto [place, isNew] =
        m_rowByKey.try_emplace({row.group, row.specialty, row.number, row.name, row.unit}, next);
    if (isNew) {
        m_bill.rows.push_back(std::move(row));
        m_shared.push_back(said);
        return next;
    }
    BillRow& known = m_bill.rows[place->second];
    known.withFittings = known.withFittings || row.withFittings;
    std::erase_if(m_shared[place->second], [&](const Feature& feature) {
        return std::find(said.begin(), said.end(), feature) == said.end();
    });
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
    for (std::size_t i = 0; i < bill.rows.size(); ++i) {
        bill.rows[i].features = Joined(m_shared[i]);
        FinishRow(bill.rows[i]);
    }
    for (const auto& [key, row] : m_rowByKey)
        bill.order.push_back(row); // the map is sorted as a bill lists its rows
    for (std::size_t i = 1; i < bill.order.size(); ++i) {
        BillRow& before = bill.rows[bill.order[i - 1]];
        BillRow& here = bill.rows[bill.order[i]];
        if (before.number == here.number && before.specialty == here.specialty && before.group == here.group)
            before.numberRepeated = here.numberRepeated = true;
    }
    return bill;
}

} // namespace rules
