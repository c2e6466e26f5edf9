#include "editor/docks/takeoff/TakeoffFigures.h"

#include <numeric>
#include <stdexcept>
#include <utility>

namespace editor {

namespace {

/// How many components are priced between two looks at the progress.
constexpr std::size_t TellEvery = 256;

/// Sorts the rows of each category by rule.
void SortByRule(TakeoffFigures& figures)
{
    for (auto& [text, hits] : figures.categories) {
        const std::size_t rules = hits.category->rules.size();
        const auto placeOf = [&](std::uint32_t row) {
            const rules::RuleIndex rule = figures.components[row].rule;
            return rule == rules::NoRule ? rules : static_cast<std::size_t>(rule);
        };
        hits.begins.assign(rules + 2, 0);
        for (const std::uint32_t row : hits.rows)
            ++hits.begins[placeOf(row) + 1];
        std::partial_sum(hits.begins.begin(), hits.begins.end(), hits.begins.begin());
        std::vector<std::size_t> next(hits.begins.begin(), hits.begins.end() - 1);
        std::vector<std::uint32_t> sorted(hits.rows.size());
        for (const std::uint32_t row : hits.rows)
            sorted[next[placeOf(row)]++] = row;
        hits.rows = std::move(sorted);
    }
}

/// Notes what became of a component. One whose id came before counts for no rule.
void Note(TakeoffFigures& figures, std::uint32_t row, const rules::ComponentResult& result)
{
    figures.components[row] = {result.rule, result.outcome, result.refusal};
    if (result.outcome == rules::Outcome::Refused) figures.refused.push_back(row);
    if (!result.category || result.refusal == rules::Refusal::IdTwice) return;
    CategoryHits& hits = figures.categories[result.category->text];
    hits.category = result.category;
    hits.rows.push_back(row);
    const bool isOnDefault = result.rule != rules::NoRule &&
                             result.category->rules[static_cast<std::size_t>(result.rule)].isDefault;
    if (isOnDefault) ++hits.onDefault;
}

} // namespace

const CategoryHits* TakeoffFigures::HitsOf(const CString& category) const
{
    const auto found = categories.find(category);
    return found == categories.end() ? nullptr : &found->second;
}

TakeoffFiguresPtr PriceTable(TakeoffTablePtr table, rules::ConfigurationPtr rules, ProjectFactsPtr facts,
                             StepControl& control)
{
    auto figures = std::make_shared<TakeoffFigures>();
    rules::BillBuilder builder(rules, facts->pricing, table->Headers());
    figures->components.resize(table->Size());
    std::vector<QStringView> cells;
    rules::ComponentResult result;
    for (std::size_t row = 0; row < table->Size(); ++row) {
        if (row % TellEvery == 0) {
            control.Check();
            control.Report(static_cast<qint64>(row), static_cast<qint64>(table->Size()));
        }
        table->CellsOf(row, cells);
        builder.Add({table->IdOf(row), table->CategoryOf(row), table->NameOf(row), cells}, result);
        Note(*figures, static_cast<std::uint32_t>(row), result);
    }
    figures->bill = builder.Finish();
    if (figures->bill.totals.in != table->Size())
        throw std::logic_error("components are lost between table and bill");
    SortByRule(*figures);
    figures->table = std::move(table);
    figures->rules = std::move(rules);
    figures->facts = std::move(facts);
    return figures;
}

} // namespace editor
