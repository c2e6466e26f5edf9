#include "shared/Outcomes.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace shared {

namespace {

struct KnownOutcome
{
    rules::Outcome outcome;
    CString word;
    CString text;
    std::uint64_t rules::Totals::*count; ///< how many components came to it
};

const std::array<KnownOutcome, 3>& Outcomes()
{
    using enum rules::Outcome;
    static const std::array<KnownOutcome, 3> outcomes{{
        {Priced, u"priced"_s, u"已套价"_s, &rules::Totals::priced},
        {OnDefault, u"default"_s, u"默认规则"_s, &rules::Totals::onDefault},
        {Refused, u"refused"_s, u"未套价"_s, &rules::Totals::refused},
    }};
    return outcomes;
}

const KnownOutcome& Of(rules::Outcome outcome)
{
    const auto& all = Outcomes();
    return *std::find_if(all.begin(), all.end(),
                         [&](const KnownOutcome& known) { return known.outcome == outcome; });
}

} // namespace

CString OutcomeWord(rules::Outcome outcome)
{
    return Of(outcome).word;
}

CString OutcomeText(rules::Outcome outcome)
{
    return Of(outcome).text;
}

CString TotalsText(const rules::Totals& totals)
{
    CStringArray parts;
    for (const KnownOutcome& known : Outcomes())
        parts.append(known.text + u' ' + CString::number(totals.*known.count));
    return u"构件 %1 个 ＝ "_s.arg(totals.in) + parts.join(u" ＋ "_s);
}

std::array<OutcomeCount, 3> CountsOf(const rules::Totals& totals)
{
    std::array<OutcomeCount, 3> counts;
    const auto& all = Outcomes();
    std::transform(all.begin(), all.end(), counts.begin(), [&](const KnownOutcome& known) {
        return OutcomeCount{known.word, totals.*known.count};
    });
    return counts;
}

} // namespace shared
