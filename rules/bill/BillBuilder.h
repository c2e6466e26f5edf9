#pragma once

#include "rules/bill/IdCheck.h"
#include "rules/bill/QuantityTable.h"
#include "rules/bill/Units.h"
#include "rules/match/Matching.h"
#include "rules/match/Trace.h"

#include <compare>
#include <map>
#include <memory>
#include <tuple>
#include <vector>

/// From components to a bill of quantities. docs/matching.md tells the semantics.
namespace rules {

/// The project's mode: bill items with their quota items below, or quota items alone.
enum class PricingMode { Bill, Quota };

/// All that pricing goes by, as plain values.
struct PricingFacts
{
    PricingMode mode = PricingMode::Bill;
    CString billLibrary;  ///< code of the bill library in use; of no account in quota mode
    CString quotaLibrary; ///< code of the quota library in use in that mode
    CatalogueFacts attributes;
    CalculationItems calculationItems;
};

/// A component of a take-off table, by views that must stand during the call. The cells stand beside the
/// headers that the builder was given.
struct TakeoffComponent
{
    QStringView id;       ///< an empty id is no other component's
    QStringView category; ///< specialty, big and small category joined by backslashes
    QStringView name;     ///< the component's own name
    CellsView cells;
};

enum class Outcome { Priced, OnDefault, Refused };

/// Why a component is refused.
enum class Refusal {
    None,
    IdTwice,         ///< a component of that id came before
    UnknownCategory, ///< the configuration has no such category
    NoRuleApplies,   ///< none applies, a default rule neither
    NoItems,         ///< the rule that applies has no items
    OtherLibraries,  ///< it has, but of libraries that are not in use
};

/// One item of one component.
struct ItemLine
{
    std::uint32_t row =
        0;             ///< index in `Bill::rows`; of a quota item in bill mode, index in that row's `quotas`
    Quantity quantity; ///< in the base unit of the row, not rounded
    std::vector<ItemLine> quotas;
};

/// What became of one component.
struct ComponentResult
{
    Outcome outcome = Outcome::Refused;
    Refusal refusal = Refusal::None;
    SmallCategoryPtr category; ///< null when it is unknown
    RuleIndex rule = NoRule;
    std::vector<ItemLine> lines;
    std::vector<Remark> remarks;   ///< what somebody should look at although it has been reckoned with
    int itemsOfOtherLibraries = 0; ///< left out, quota items of left-out bill items not counted
};

/// What a rule says of an attribute, as the bill's description of features has it.
struct Feature
{
    CString attribute;
    CString text; ///< the value, "≠" and the value, or the bounds with their operators

    std::strong_ordering operator<=>(const Feature&) const = default;
};

/// A row of the bill, or a quota item below one.
struct BillRow
{
    std::vector<CString> group; ///< the values of the columns by which the bill is divided
    CString specialty;
    CString number;
    CString name;
    CString unit;
    std::vector<Feature> features; ///< what all rules of the row say; of a quota item none. Set by `Finish`
    Decimal sum;                   ///< of the known quantities, in the base unit, exact
    CString quantity; ///< `sum` in the row's unit, rounded; empty when all are missing. Set by `Finish`
    std::uint64_t components = 0; ///< how many have a part in it, those without a quantity included
    std::uint64_t missing = 0;    ///< how many of them have no quantity: the row is then marked
    bool withFittings = false;    ///< 带管道配件; told, without effect on quantities
    bool numberRepeated = false;  ///< another row has the same number and differs elsewhere
    std::vector<BillRow> quotas;

    /// The features as the national form has them: one a line, numbered.
    KTQDDE_RULES_EXPORT CString FeatureText() const;
};

struct Totals
{
    std::uint64_t in = 0;
    std::uint64_t priced = 0;
    std::uint64_t onDefault = 0;
    std::uint64_t refused = 0;

    bool operator==(const Totals&) const = default;
};

struct Bill
{
    std::vector<BillRow> rows; ///< in the order in which components first came to them
    std::vector<std::uint32_t>
        order; ///< indexes of `rows` as a bill lists them: by group, specialty, number, name, unit
    Totals totals;
};

/// Prices components one after the other and sums up. What it keeps grows with the rows of the bill and the
/// ids, not with anything else of the components, so that a table of any length can be priced while it is
/// read. For one thread.
class KTQDDE_RULES_EXPORT BillBuilder
{
public:
    /// `headers` are those of the table, for all components. The configuration must not be null. Components
    /// whose cells differ in one of the columns `groupBy`, indexes of headers, share no row.
    BillBuilder(ConfigurationPtr configuration, PricingFacts facts, CStringArray headers,
                std::vector<std::size_t> groupBy = {});
    ~BillBuilder();
    BillBuilder(const BillBuilder&) = delete;
    BillBuilder& operator=(const BillBuilder&) = delete;

    /// As the constructor was given them.
    const CStringArray& Headers() const noexcept { return m_headers; }
    const std::vector<std::size_t>& GroupBy() const noexcept { return m_groupBy; }

    /// The rows so far, as `Bill::rows`, but for what `Finish` sets.
    const std::vector<BillRow>& Rows() const noexcept { return m_bill.rows; }

    /// Lets another check than `EveryId` decide which ids came before. It must outlive this.
    void CheckIdsBy(IdCheck& ids) noexcept { m_ids = &ids; }

    /// Prices one component and adds it to the bill. It must have as many cells as there are headers.
    ComponentResult Add(const TakeoffComponent& component);
    /// The same, with `result` overwritten: one that is used again and again spares allocations.
    void Add(const TakeoffComponent& component, ComponentResult& result);

    /// Why the component gets the rule that it gets. Adds nothing to the bill. Nothing for a category that is
    /// unknown.
    std::optional<Trace> Explain(const TakeoffComponent& component);

    /// A row of the bill so far, by its index; its features are not set.
    const BillRow& RowAt(std::uint32_t row) const { return m_bill.rows[row]; }

    /// The bill of what was added so far. Raises `std::logic_error` when not every component is accounted
    /// for.
    Bill Finish() const;

private:
    struct Item;
    struct PreparedRule;
    struct CategoryState;

    CategoryState* StateOf(QStringView category);
    void Price(const TakeoffComponent& component, ComponentResult& result);
    static RuleIndex Match(CategoryState& state, const TakeoffComponent& component,
                           std::vector<Remark>& remarks);
    std::uint32_t GroupOf(const TakeoffComponent& component);
    const PreparedRule& ItemsOf(CategoryState& state, RuleIndex rule, std::uint32_t group);
    PreparedRule PrepareItems(CategoryState& state, const Rule& rule, std::uint32_t group);
    std::uint32_t RowOf(BillRow row, const CategoryState& state, std::uint32_t group, const Rule& rule);
    void Put(const Item& item, QuantityTable& quantities, ItemLine& line);
    static void AddTo(BillRow& row, const Quantity& quantity);

    ConfigurationPtr m_configuration;
    PricingFacts m_facts;
    CStringArray m_headers;
    TextMap<std::unique_ptr<CategoryState>> m_categories; ///< null for those that are unknown
    EveryId m_everyId;
    IdCheck* m_ids = &m_everyId;
    std::vector<std::size_t> m_groupBy;
    std::map<std::vector<CString>, std::uint32_t> m_groupByCells;
    std::vector<std::vector<CString>> m_groups;
    /// Group, specialty, number, name and unit.
    std::map<std::tuple<std::vector<CString>, CString, CString, CString, CString>, std::uint32_t> m_rowByKey;
    std::vector<std::vector<Feature>> m_shared; ///< by row: what all its rules so far say, a condition each
    Bill m_bill;
};

} // namespace rules
