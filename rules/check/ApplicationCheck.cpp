#include "rules/check/CheckParts.h"
#include "rules/check/Gaps.h"
#include "rules/check/RegionText.h"
#include "rules/check/RuleCoverage.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

void TellHidden(const SmallCategory& category, std::size_t rule, const RuleCoverage& coverage,
                FindingList& findings)
{
    CString text = u"这条规则永远不会适用：它的构件都先归了前面的%1规则"_s.arg(RulesText(coverage.hiders));
    if (coverage.hiders.size() > 1) text += u"，合起来一个不剩"_s;
    if (!coverage.isSmallest) text += u"（其中一部分也许就够了）"_s;
    Finding& finding = findings.Add(FindingCode::NeverApplies, category, rule, text);
    finding.others = PositionsOf(coverage.hiders);
    if (!IsReached(category, rule)) return;
    finding.mend = Mend{.op = u"DelConfig"_s, .configId = category.rules[rule].id};
}

void TellRest(const SmallCategory& category, const CellSpace& space, std::size_t rule,
              const RuleCoverage& coverage, FindingList& findings)
{
    const CString left =
        coverage.left.empty() ? u"没有算出"_s : RegionsText(space, coverage.left, coverage.isLeftAll);
    findings
        .Add(FindingCode::PartlyHidden, category, rule,
             u"一部分构件先归了前面的%1规则，剩下的是：%2"_s.arg(RulesText(coverage.takers), left))
        .others = PositionsOf(coverage.takers);
}

void TellDefault(const SmallCategory& category, const RegionIndex& index, const CheckFacts& facts,
                 FindingList& findings)
{
    const auto byDefault = std::find_if(category.rules.begin(), category.rules.end(),
                                        [](const Rule& rule) { return rule.isDefault; });
    if (byDefault == category.rules.end() || CoversAllFilled(index, facts.effort) != Cover::Answer::Covered)
        return;
    const auto all = std::find_if(category.rules.begin(), category.rules.end(), [](const Rule& rule) {
        return !rule.isDefault && rule.conditions.empty();
    });
    const CString text =
        all == category.rules.end()
            ? u"属性都填写了的构件全有别的规则，默认规则只适用于缺少属性的构件"_s
            : u"第 %1 条规则没有条件，默认规则永远不会适用"_s.arg(all - category.rules.begin() + 1);
    findings.Add(FindingCode::DefaultNeverApplies, category,
                 static_cast<std::size_t>(byDefault - category.rules.begin()), text);
}

void TellGap(const SmallCategory& category, const CellSpace& space, const Gap& gap, FindingList& findings)
{
    const CellSpace::Attribute& attribute = space.Attributes()[gap.attribute];
    CString text = u"%1 没有规则，只能归默认规则，而它的两边有第 %2 条和第 %3 条规则"_s.arg(
        GapText(attribute, gap.first, gap.last), QString::number(gap.below + 1),
        QString::number(gap.above + 1));
    Region below = space.RegionOf(gap.below);
    below[gap.attribute] = space.Sets(gap.attribute)[CellSpace::All];
    const CString context = RegionsText(space, gap.contexts, gap.isAll);
    if (context != RegionsText(space, {below}, true)) text += u"。构件是："_s + context;
    findings.Add(FindingCode::Gap, category, gap.below, text).others = {static_cast<int>(gap.above) + 1};
}

} // namespace

void CheckApplication(const SmallCategory& category, const CellSpace& space, const CheckFacts& facts,
                      FindingList& findings)
{
    const RegionIndex index(space, category.rules.size());
    const std::vector<RuleCoverage> coverage = CoverageOf(index, facts.effort);
    for (std::size_t rule = 0; rule < coverage.size(); ++rule) {
        if (coverage[rule].state == RuleCoverage::State::Hidden)
            TellHidden(category, rule, coverage[rule], findings);
        else if (coverage[rule].state == RuleCoverage::State::Undecided)
            findings.Add(FindingCode::NotDecided, category, rule,
                         u"这条规则会不会适用没有判定：前面的规则组合太多"_s);
        else if (!coverage[rule].takers.empty())
            TellRest(category, space, rule, coverage[rule], findings);
    }
    TellDefault(category, index, facts, findings);
    const GapsFound gaps = GapsOf(index, facts.effort);
    for (const Gap& gap : gaps.gaps)
        TellGap(category, space, gap, findings);
    if (!gaps.isDecided)
        findings.Add(FindingCode::NotDecided, category.text, u"规则之间的空档没有全部找出：组合太多"_s);
}

} // namespace rules
