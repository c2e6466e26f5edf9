#include "rules/bill/Coverage.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <utility>

namespace rules {

std::uint64_t CategoryCoverage::Components() const
{
    return std::accumulate(hits.begin(), hits.end(), withoutRule);
}

/// One category of the table.
struct CoverageBuilder::State
{
    State(const SmallCategoryPtr& category, const PricingFacts& facts, const CStringArray& headers,
          const Measures& measures)
        : known(FactsOf(facts, category->text)), matcher(category, known),
          columns(matcher.ColumnsFor(headers)), quantities(headers, known, facts.calculationItems)
    {
        found.category = category;
        found.hits.resize(category->rules.size());
        for (const CategoryMatcher::Attribute& attribute : matcher.Attributes())
            found.attributes.append(attribute.name);
        const auto measure = measures.find(category->text);
        if (measure != measures.end()) found.measure = measure->second;
        if (!found.measure.item.isEmpty()) formula = quantities.Add(found.measure.item);
    }

    static const CategoryFacts& FactsOf(const PricingFacts& facts, const CString& text)
    {
        static const CategoryFacts None;
        const auto place = facts.attributes.find(text);
        return place == facts.attributes.end() ? None : place->second;
    }

    const CategoryFacts& known;
    CategoryMatcher matcher;
    std::vector<std::optional<std::size_t>> columns;
    QuantityTable quantities;
    std::size_t formula = 0;                              ///< of the measure, if there is one
    CategoryCoverage found;                               ///< without its groups
    std::map<std::vector<CString>, UncaughtGroup> groups; ///< by their values
};

CoverageBuilder::CoverageBuilder(ConfigurationPtr configuration, PricingFacts facts, Measures measures)
    : m_configuration(std::move(configuration)), m_facts(std::move(facts)), m_measures(std::move(measures))
{
}

CoverageBuilder::~CoverageBuilder() = default;

void CoverageBuilder::Begin()
{
    m_states.clear();
    m_components = m_idsTwice = m_unknownCategory = 0;
}

CoverageBuilder::State& CoverageBuilder::StateOf(const SmallCategoryPtr& category,
                                                 const CStringArray& headers)
{
    std::unique_ptr<State>& state = m_states[category.get()];
    if (!state) state = std::make_unique<State>(category, m_facts, headers, m_measures);
    return *state;
}

void CoverageBuilder::Take(const PricedRow& priced)
{
    ++m_components;
    const ComponentResult& result = priced.result;
    if (result.refusal == Refusal::IdTwice) {
        ++m_idsTwice;
        return;
    }
    if (!result.category) {
        ++m_unknownCategory;
        return;
    }
    State& state = StateOf(result.category, priced.builder.Headers());
    if (result.rule == NoRule)
        ++state.found.withoutRule;
    else
        ++state.found.hits[static_cast<std::size_t>(result.rule)];
    const bool onDefault =
        result.rule != NoRule && result.category->rules[static_cast<std::size_t>(result.rule)].isDefault;
    if (onDefault) ++state.found.onDefault;
    if (onDefault || result.rule == NoRule) AddUncaught(state, priced.component);
}

void CoverageBuilder::AddUncaught(State& state, const TakeoffComponent& component)
{
    const std::vector<CategoryMatcher::Attribute>& attributes = state.matcher.Attributes();
    std::vector<CString> values;
    for (std::size_t i = 0; i < attributes.size(); ++i) {
        const QStringView cell = attributes[i].isOwnName ? component.name
                                 : state.columns[i]      ? component.cells[*state.columns[i]]
                                                         : QStringView();
        values.push_back(WithoutBlanks(cell).toString());
    }
    UncaughtGroup& group = state.groups[values];
    if (group.components++ == 0) {
        group.values = std::move(values);
        group.firstId = component.id.toString();
    }
    if (state.found.measure.item.isEmpty()) return;
    const Quantity quantity = state.quantities.Evaluate(state.formula, component.cells);
    if (quantity.IsKnown())
        group.quantity += quantity.value;
    else
        ++group.missing;
    state.quantities.TakeRemarks();
}

Coverage CoverageBuilder::Finish() const
{
    Coverage coverage{{}, m_components, m_idsTwice, m_unknownCategory};
    std::uint64_t accounted = m_idsTwice + m_unknownCategory;
    for (const Specialty& specialty : m_configuration->Specialties())
        for (const BigCategory& big : specialty.bigCategories)
            for (const SmallCategoryPtr& small : big.smallCategories) {
                const auto state = m_states.find(small.get());
                if (state == m_states.end()) continue;
                CategoryCoverage& category = coverage.categories.emplace_back(state->second->found);
                for (const auto& [values, group] : state->second->groups)
                    category.uncaught.push_back(group);
                std::stable_sort(category.uncaught.begin(), category.uncaught.end(),
                                 [](const UncaughtGroup& a, const UncaughtGroup& b) {
                                     return a.quantity != b.quantity ? a.quantity > b.quantity
                                                                     : a.components > b.components;
                                 });
                accounted += category.Components();
            }
    if (accounted != m_components) throw std::logic_error("components are lost in the coverage");
    return coverage;
}

} // namespace rules
