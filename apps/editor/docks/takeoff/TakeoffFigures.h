#pragma once

#include "editor/docks/takeoff/TakeoffTable.h"
#include "editor/session/ProjectFacts.h"
#include "rules/bill/BillBuilder.h"

#include <map>
#include <span>

namespace editor {

/// The components of one category by the rule that takes them.
struct CategoryHits
{
    rules::SmallCategoryPtr category; ///< in the state by which they were priced
    std::vector<std::uint32_t> rows;  ///< of the table: rule by rule, those without a rule last
    std::vector<std::size_t> begins;  ///< in `rows`: of each rule, of those without one, and the end
    std::uint64_t onDefault = 0;

    std::span<const std::uint32_t> RowsOf(std::size_t rule) const
    {
        return std::span(rows).subspan(begins[rule], begins[rule + 1] - begins[rule]);
    }
    std::uint64_t Components() const { return rows.size(); }
    std::uint64_t WithoutRule() const { return begins.back() - begins[begins.size() - 2]; }
};

/// What a state of the draft makes of a take-off table. Nothing changes it, and any thread may read it.
struct TakeoffFigures
{
    /// What became of a component.
    struct Priced
    {
        rules::RuleIndex rule = rules::NoRule;
        rules::Outcome outcome = rules::Outcome::Refused;
        rules::Refusal refusal = rules::Refusal::None;
    };

    TakeoffTablePtr table;
    rules::ConfigurationPtr rules;
    ProjectFactsPtr facts;
    rules::Bill bill;
    std::vector<Priced> components;             ///< by row of the table
    std::map<CString, CategoryHits> categories; ///< by text; those that the table has components of
    std::vector<std::uint32_t> refused;         ///< rows of those that are not priced

    /// Null when the table has no component of the category.
    const CategoryHits* HitsOf(const CString& category) const;
};
using TakeoffFiguresPtr = std::shared_ptr<const TakeoffFigures>;

/// Prices all components of a table. `rules` are those of the categories that the host offers, as the command
/// line prices. Raises `embedded::Cancelled`.
TakeoffFiguresPtr PriceTable(TakeoffTablePtr table, rules::ConfigurationPtr rules, ProjectFactsPtr facts,
                             StepControl& control);

} // namespace editor
