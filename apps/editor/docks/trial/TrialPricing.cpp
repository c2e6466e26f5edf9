#include "editor/docks/trial/TrialPricing.h"

#include <utility>

namespace editor {

namespace {

/// The category and nothing else.
rules::ConfigurationPtr Alone(const rules::SmallCategoryPtr& category)
{
    rules::Specialty specialty{.name = category->text.section(u'\\', 0, 0), .bigCategories = {}};
    specialty.bigCategories.push_back(
        {.name = category->text.section(u'\\', 1, 1), .smallCategories = {category}});
    return std::make_shared<const rules::Configuration>(std::vector{std::move(specialty)});
}

rules::PricingFacts FactsFor(const CString& category, const rules::PricingFacts& facts)
{
    rules::PricingFacts own{.mode = facts.mode,
                            .billLibrary = facts.billLibrary,
                            .quotaLibrary = facts.quotaLibrary,
                            .attributes = {},
                            .calculationItems = facts.calculationItems};
    const auto known = facts.attributes.find(category);
    if (known != facts.attributes.end()) own.attributes.insert(*known);
    return own;
}

} // namespace

TrialPricing::TrialPricing(rules::SmallCategoryPtr category, const rules::PricingFacts& facts,
                           CStringArray headers)
    : m_category(std::move(category))
{
    rules::PricingFacts own = FactsFor(m_category->text, facts);
    m_matcher = std::make_shared<const rules::CategoryMatcher>(m_category, own.attributes[m_category->text]);
    m_columns = m_matcher->ColumnsFor(headers);
    m_builder = std::make_unique<rules::BillBuilder>(Alone(m_category), std::move(own), std::move(headers));
}

TrialPricing::~TrialPricing() = default;

TrialPricing::Result TrialPricing::Price(const std::vector<CString>& cells, const CString& name)
{
    const rules::TakeoffComponent component{{}, m_category->text, name, cells};
    return {m_builder->Add(component), m_builder->Explain(component).value()};
}

std::vector<rules::Cell> TrialPricing::CellsOf(const std::vector<CString>& cells, const CString& name) const
{
    std::vector<rules::Cell> own;
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        if (m_matcher->Attributes()[i].isOwnName)
            own.emplace_back(name);
        else
            own.push_back(m_columns[i] ? rules::Cell(cells[*m_columns[i]]) : rules::Cell());
    return own;
}

} // namespace editor
