#include "rules/bill/BillComparison.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace rules {

namespace {

ComparedItem Compared(const ItemLine& line, const BillRow& row, bool isBelow)
{
    return {row.number, row.name, row.unit, isBelow, line.quantity};
}

/// What a builder has made of a component. Its rows are looked at in the builder's bill so far.
ComparedSide SideOf(const ComponentResult& result, const std::vector<BillRow>& rows)
{
    ComparedSide side;
    side.outcome = result.outcome;
    side.refusal = result.refusal;
    side.rule = result.rule;
    if (result.rule != NoRule)
        side.ruleText = result.category->rules[static_cast<std::size_t>(result.rule)].Text();
    for (const ItemLine& line : result.lines) {
        const BillRow& row = rows[line.row];
        side.items.push_back(Compared(line, row, false));
        for (const ItemLine& quota : line.quotas)
            side.items.push_back(Compared(quota, row.quotas[quota.row], true));
    }
    return side;
}

auto PlaceOf(const BillRow& row)
{
    return std::tie(row.group, row.specialty, row.number, row.name, row.unit);
}

BillRow WithoutQuotas(const BillRow& row)
{
    BillRow copy = row;
    copy.quotas.clear();
    return copy;
}

bool IsSame(const BillRow& a, const BillRow& b)
{
    return a.quantity == b.quantity && a.sum == b.sum && a.components == b.components &&
           a.missing == b.missing && a.withFittings == b.withFittings && a.features == b.features;
}

/// What differs between rows that are sorted by their place.
std::vector<RowChange> Changes(const std::vector<const BillRow*>& before,
                               const std::vector<const BillRow*>& after);

std::vector<const BillRow*> Sorted(const std::vector<BillRow>& rows)
{
    std::vector<const BillRow*> sorted;
    for (const BillRow& row : rows)
        sorted.push_back(&row);
    std::sort(sorted.begin(), sorted.end(),
              [](const auto* a, const auto* b) { return PlaceOf(*a) < PlaceOf(*b); });
    return sorted;
}

std::optional<RowChange> ChangeOf(const BillRow* before, const BillRow* after)
{
    static const std::vector<BillRow> None;
    RowChange change;
    if (before != nullptr) change.before = WithoutQuotas(*before);
    if (after != nullptr) change.after = WithoutQuotas(*after);
    change.quotas = Changes(Sorted(before != nullptr ? before->quotas : None),
                            Sorted(after != nullptr ? after->quotas : None));
    const bool same =
        before != nullptr && after != nullptr && IsSame(*before, *after) && change.quotas.empty();
    if (same) return std::nullopt;
    return change;
}

std::vector<RowChange> Changes(const std::vector<const BillRow*>& before,
                               const std::vector<const BillRow*>& after)
{
    std::vector<RowChange> changes;
    auto one = before.begin();
    auto other = after.begin();
    while (one != before.end() || other != after.end()) {
        const bool takesOne =
            one != before.end() && (other == after.end() || !(PlaceOf(**other) < PlaceOf(**one)));
        const bool takesOther =
            other != after.end() && (one == before.end() || !(PlaceOf(**one) < PlaceOf(**other)));
        if (auto change = ChangeOf(takesOne ? *one : nullptr, takesOther ? *other : nullptr))
            changes.push_back(std::move(*change));
        if (takesOne) ++one;
        if (takesOther) ++other;
    }
    return changes;
}

} // namespace

bool ComparedItem::operator==(const ComparedItem& other) const
{
    return number == other.number && name == other.name && unit == other.unit && isBelow == other.isBelow &&
           quantity.fault == other.quantity.fault && quantity.value == other.quantity.value &&
           quantity.subject == other.quantity.subject;
}

bool ComparedSide::operator==(const ComparedSide& other) const
{
    return outcome == other.outcome && refusal == other.refusal && ruleText == other.ruleText &&
           items == other.items;
}

/// What the first configuration's check has found of an id holds for the second one.
class BillComparison::OtherIds final : public IdCheck
{
public:
    bool IsNew(QStringView /*id*/) override { return isNew; }
    bool isNew = true;
};

BillComparison::BillComparison(ConfigurationPtr after, PricingFacts facts)
    : m_configuration(std::move(after)), m_facts(std::move(facts)), m_ids(std::make_unique<OtherIds>())
{
}

BillComparison::~BillComparison() = default;

void BillComparison::Begin()
{
    m_builder.reset();
    m_changed = 0;
    m_differences.clear();
}

std::optional<ComponentChange> BillComparison::Take(const PricedRow& priced)
{
    if (!m_builder) {
        m_builder = std::make_unique<BillBuilder>(m_configuration, m_facts, priced.builder.Headers(),
                                                  priced.builder.GroupBy());
        m_builder->CheckIdsBy(*m_ids);
    }
    m_ids->isNew = priced.result.refusal != Refusal::IdTwice;
    m_builder->Add(priced.component, m_result);
    ComponentChange change{SideOf(priced.result, priced.builder.Rows()), SideOf(m_result, m_builder->Rows())};
    if (change.before == change.after) return std::nullopt;
    ++m_changed;
    const CString specialty = priced.component.category.toString().section(u'\\', 0, 0);
    Note(specialty, change.before, -1);
    Note(specialty, change.after, 1);
    return change;
}

void BillComparison::Note(const CString& specialty, const ComparedSide& side, int sign)
{
    for (const ComparedItem& item : side.items) {
        Difference& difference = m_differences[{specialty, item.number, item.name, item.unit, item.isBelow}];
        difference.components += sign;
        if (item.quantity.IsKnown()) difference.sum += sign < 0 ? -item.quantity.value : item.quantity.value;
    }
}

Bill BillComparison::After() const
{
    return m_builder ? m_builder->Finish() : Bill();
}

void BillComparison::Sum(const Bill& bill, int sign, Differences& differences)
{
    const auto add = [&](const CString& specialty, const BillRow& row, bool isBelow) {
        Difference& difference = differences[{specialty, row.number, row.name, row.unit, isBelow}];
        difference.components += sign * static_cast<std::int64_t>(row.components);
        difference.sum += sign < 0 ? -row.sum : row.sum;
    };
    for (const BillRow& row : bill.rows) {
        add(row.specialty, row, false);
        for (const BillRow& quota : row.quotas)
            add(row.specialty, quota, true);
    }
}

std::vector<RowChange> BillComparison::Rows(const Bill& before, const Bill& after) const
{
    Differences sums;
    Sum(before, -1, sums);
    Sum(after, 1, sums);
    const auto isNothing = [](const auto& entry) { return entry.second == Difference(); };
    Differences told = m_differences;
    std::erase_if(sums, isNothing);
    std::erase_if(told, isNothing);
    if (sums != told) throw std::logic_error("the changes of components do not come to those of the bill");
    return Changes(Sorted(before.rows), Sorted(after.rows));
}

} // namespace rules
