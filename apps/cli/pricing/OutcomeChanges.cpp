#include "cli/pricing/OutcomeChanges.h"

#include "cli/pricing/PricingText.h"

using namespace Qt::StringLiterals;

namespace cli {

namespace {

constexpr std::uint64_t TellEvery = 256;

/// What one state of the rules gives.
class Pricing
{
public:
    Pricing(const rules::ConfigurationPtr& configuration, const rules::PricingFacts& facts,
            const CStringArray& headers)
        : m_builder(configuration, facts, headers)
    {
    }

    /// The end that a component comes to and its items, as lines; `rule` becomes the rule that applies.
    CStringArray Price(const rules::TakeoffComponent& component, CString& rule)
    {
        const rules::ComponentResult result = m_builder.Add(component);
        rule = result.rule == rules::NoRule ? CString() : RuleText(result);
        CStringArray lines{result.outcome == rules::Outcome::Refused ? RefusalText(result.refusal)
                                                                     : OutcomeText(result.outcome)};
        for (const rules::ItemLine& line : result.lines) {
            lines += ItemText(m_builder.RowAt(line.row), line);
            for (const rules::ItemLine& quota : line.quotas)
                lines += u"  "_s + ItemText(m_builder.RowAt(line.row).quotas[quota.row], quota);
        }
        return lines;
    }

private:
    static CString RuleText(const rules::ComponentResult& result)
    {
        return u"第 %1 条 "_s.arg(result.rule + 1) +
               result.category->rules[static_cast<std::size_t>(result.rule)].Text();
    }

    static CString ItemText(const rules::BillRow& row, const rules::ItemLine& line)
    {
        const CString quantity =
            line.quantity.IsKnown() ? QuantityIn(line.quantity, row.unit) : FaultText(line.quantity);
        return u"%1 %2（%3）：%4"_s.arg(row.number, row.name, row.unit, quantity);
    }

    rules::BillBuilder m_builder;
};

} // namespace

OutcomeChanges CompareOutcomes(const TakeoffJob& before, const rules::ConfigurationPtr& after,
                               const embedded::Progress& progress)
{
    rules::TakeoffReader reader(before.table,
                                {.sheet = before.sheet, .pulse = [&] { embedded::Tell(progress, 0); }});
    Pricing former(before.configuration, before.facts, reader.Headers());
    Pricing present(after, before.facts, reader.Headers());
    OutcomeChanges result;
    rules::TakeoffRow row;
    while (reader.Next(row)) {
        if (result.components++ % TellEvery == 0)
            embedded::Tell(progress, static_cast<int>(100 * reader.Progress()));
        const rules::TakeoffComponent component{row.id, row.category, row.name, row.cells};
        CString formerRule;
        CString presentRule;
        const CStringArray was = former.Price(component, formerRule);
        const CStringArray is = present.Price(component, presentRule);
        if (was == is) continue;
        result.changes.push_back({row.line, row.id, row.name, row.category, CStringArray{formerRule} + was,
                                  CStringArray{presentRule} + is});
    }
    embedded::Tell(progress, 100);
    return result;
}

} // namespace cli
