#pragma once

#include "rules/bill/PriceTakeoff.h"

#include <map>
#include <memory>
#include <optional>
#include <vector>

/// What becomes of a bill of quantities when the rules change.
namespace rules {

/// An item that a component has a part in, as it stands in the bill.
struct ComparedItem
{
    CString number;
    CString name;
    CString unit;
    bool isBelow = false; ///< a quota item below the bill item before it
    Quantity quantity;    ///< in the base unit

    KTQDDE_RULES_EXPORT bool operator==(const ComparedItem& other) const;
};

/// What one configuration makes of a component.
struct ComparedSide
{
    Outcome outcome = Outcome::Refused;
    Refusal refusal = Refusal::None;
    RuleIndex rule = NoRule;
    CString ruleText; ///< empty for no rule
    std::vector<ComparedItem> items;

    /// Of equal worth: a rule that has moved in the list without other conditions is the same.
    KTQDDE_RULES_EXPORT bool operator==(const ComparedSide& other) const;
};

/// A component that gets another rule, other items or other quantities.
struct ComponentChange
{
    ComparedSide before;
    ComparedSide after;
};

/// A row of the bill before and after, or a quota row below one. Of a row that one of the bills lacks its
/// side is empty.
struct RowChange
{
    std::optional<BillRow> before; ///< without its quotas
    std::optional<BillRow> after;  ///< without its quotas
    std::vector<RowChange> quotas; ///< those that differ

    /// The row as either bill has it.
    const BillRow& Either() const { return after ? *after : *before; }
};

/// Prices the components of a table by a second configuration while it is priced by the first.
class KTQDDE_RULES_EXPORT BillComparison
{
public:
    /// `facts` are those by which the first prices, too.
    BillComparison(ConfigurationPtr after, PricingFacts facts);
    ~BillComparison();
    BillComparison(const BillComparison&) = delete;
    BillComparison& operator=(const BillComparison&) = delete;

    /// Forgets all components.
    void Begin();
    /// Prices a component by the second configuration, too. What changes for it; nothing when nothing does.
    std::optional<ComponentChange> Take(const PricedRow& priced);
    /// How many components have changed so far.
    std::uint64_t ChangedComponents() const noexcept { return m_changed; }

    /// The bill by the second configuration.
    Bill After() const;
    /// The rows that differ, in the order of a bill. Raises `std::logic_error` when what has changed of the
    /// components does not come to what has changed of the sums.
    std::vector<RowChange> Rows(const Bill& before, const Bill& after) const;

private:
    class OtherIds;
    struct Difference
    {
        Decimal sum;
        std::int64_t components = 0;

        bool operator==(const Difference&) const = default;
    };
    /// Specialty, number, name, unit, and whether it is a quota item below another.
    using Key = std::tuple<CString, CString, CString, CString, bool>;
    using Differences = std::map<Key, Difference>;

    void Note(const CString& specialty, const ComparedSide& side, int sign);
    static void Sum(const Bill& bill, int sign, Differences& differences);

    ConfigurationPtr m_configuration;
    PricingFacts m_facts;
    std::unique_ptr<OtherIds> m_ids;
    std::unique_ptr<BillBuilder> m_builder; ///< null before the first component
    ComponentResult m_result;
    std::uint64_t m_changed = 0;
    Differences m_differences; ///< what the changes of components come to
};

} // namespace rules
