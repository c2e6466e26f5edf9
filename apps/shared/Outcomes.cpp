#include "shared/Outcomes.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace shared {

namespace {

struct Known
{
    rules::Outcome outcome;
    CString word;
    CString text;
    std::uint64_t rules::Totals::*count; ///< how many components came to it
};

const Known& Of(rules::Outcome outcome)
{
    using enum rules::Outcome;
    static const std::array<Known, 3> outcomes{{
        {Priced, u"priced"_s, u"已套价"_s, &rules::Totals::priced},
        {OnDefault, u"default"_s, u"默认规则"_s, &rules::Totals::onDefault},
        {Refused, u"refused"_s, u"未套价"_s, &rules::Totals::refused},
    }};
    return *std::find_if(outcomes.begin(), outcomes.end(),
                         [&](const Known& known) { return known.outcome == outcome; });
}

} // namespace

const std::array<rules::Outcome, 3>& AllOutcomes()
{
    using enum rules::Outcome;
    static constexpr std::array All{Priced, OnDefault, Refused};
    return All;
}

CString OutcomeWord(rules::Outcome outcome)
{
    return Of(outcome).word;
}

CString OutcomeText(rules::Outcome outcome)
{
    return Of(outcome).text;
}

std::uint64_t CountOf(const rules::Totals& totals, rules::Outcome outcome)
{
    return totals.*Of(outcome).count;
}

CString TotalsText(const rules::Totals& totals)
{
    CStringArray parts;
    for (const rules::Outcome outcome : AllOutcomes())
        parts.append(OutcomeText(outcome) + u' ' + CString::number(CountOf(totals, outcome)));
    return u"构件 %1 个 ＝ "_s.arg(totals.in) + parts.join(u" ＋ "_s);
}

} // namespace shared
