#pragma once

#include "rules/bill/PriceTakeoff.h"

#include <map>
#include <memory>
#include <vector>

/// What the rules of a configuration catch of the components of a table, and what they leave to default
/// rules.
namespace rules {

/// What the components of a category are measured by.
struct Measure
{
    CString item; ///< calculation item; empty for the mere number of components
    CString unit;
};

/// By category text. A category that is not in it is measured by the number of its components.
using Measures = std::map<CString, Measure>;

/// Components that no rule catches and that are the same in all that the rules of their category look at.
struct UncaughtGroup
{
    std::vector<CString>
        values; ///< beside `CategoryCoverage::attributes`, without blanks; empty for no value
    std::uint64_t components = 0;
    std::uint64_t missing = 0; ///< how many of them have no quantity
    Decimal quantity;          ///< the sum of the others by the category's measure
    CString firstId;           ///< that of one of them
};

struct CategoryCoverage
{
    SmallCategoryPtr category;
    CStringArray attributes;         ///< that its rules look at, in the order in which they do
    std::vector<std::uint64_t> hits; ///< beside the category's rules, default rules included
    std::uint64_t onDefault = 0;     ///< components on the default rule, part of `hits`
    std::uint64_t withoutRule = 0;   ///< components that not even a default rule catches
    Measure measure;
    std::vector<UncaughtGroup> uncaught; ///< the largest quantity first, of equal ones the most components

    /// How many components of the category there are.
    KTQDDE_RULES_EXPORT std::uint64_t Components() const;
};

struct Coverage
{
    std::vector<CategoryCoverage>
        categories;               ///< those that the table has components of, as the configuration has them
    std::uint64_t components = 0; ///< all of the table
    std::uint64_t idsTwice = 0;   ///< those that were passed over because their id came before
    std::uint64_t unknownCategory = 0; ///< those of categories that are not in the configuration
};

/// Gathers what becomes of components while a table is priced. Grows with the groups of components that no
/// rule catches. For one thread.
class KTQDDE_RULES_EXPORT CoverageBuilder
{
public:
    CoverageBuilder(ConfigurationPtr configuration, PricingFacts facts, Measures measures);
    ~CoverageBuilder();
    CoverageBuilder(const CoverageBuilder&) = delete;
    CoverageBuilder& operator=(const CoverageBuilder&) = delete;

    /// Forgets all components.
    void Begin();
    /// All components must come from tables with the same headings until the next `Begin`.
    void Take(const PricedRow& priced);
    /// Raises `std::logic_error` when not every component is accounted for.
    Coverage Finish() const;

private:
    struct State;

    State& StateOf(const SmallCategoryPtr& category, const CStringArray& headers);
    static void AddUncaught(State& state, const TakeoffComponent& component);

    ConfigurationPtr m_configuration;
    PricingFacts m_facts;
    Measures m_measures;
    std::map<const SmallCategory*, std::unique_ptr<State>> m_states;
    std::uint64_t m_components = 0;
    std::uint64_t m_idsTwice = 0;
    std::uint64_t m_unknownCategory = 0;
};

} // namespace rules
