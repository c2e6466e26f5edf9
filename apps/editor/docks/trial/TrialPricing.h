#pragma once

#include "editor/docks/takeoff/Component.h"
#include "rules/bill/BillBuilder.h"

#include <memory>

namespace editor {

/// Prices single components by the rules of one category, as a take-off table with these headers would be.
class TrialPricing
{
public:
    /// What became of a component.
    struct Result
    {
        rules::ComponentResult component;
        rules::Trace trace;
    };

    /// `category` must not be null; of the facts only what concerns it is kept.
    TrialPricing(rules::SmallCategoryPtr category, const rules::PricingFacts& facts, CStringArray headers);
    ~TrialPricing();

    const rules::SmallCategoryPtr& Category() const noexcept { return m_category; }
    const CStringArray& Headers() const noexcept { return m_builder->Headers(); }
    const std::shared_ptr<const rules::CategoryMatcher>& Matcher() const noexcept { return m_matcher; }

    /// `cells` stand beside the headers.
    Result Price(const std::vector<CString>& cells, const CString& name);
    /// The component's cells for the matcher's attributes.
    std::vector<rules::Cell> CellsOf(const std::vector<CString>& cells, const CString& name) const;
    /// The row that an item line is of.
    const rules::BillRow& RowOf(const rules::ItemLine& line) const { return m_builder->RowAt(line.row); }

private:
    rules::SmallCategoryPtr m_category;
    std::shared_ptr<const rules::CategoryMatcher> m_matcher;
    std::vector<std::optional<std::size_t>> m_columns; ///< beside the matcher's attributes
    std::unique_ptr<rules::BillBuilder> m_builder;
};

} // namespace editor
