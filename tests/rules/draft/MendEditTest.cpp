#include "rules/draft/MendEdit.h"

#include "rules/CheckTesting.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using rules::Draft;
using rules::Edit;
using rules::Finding;
using rules::Rule;
using test::GoodBill;
using test::GoodQuota;
using test::PricedRule;
using test::Value;

namespace {

Draft DraftOfCategory(const rules::SmallCategory& category)
{
    const auto file = std::make_shared<const rules::Configuration>(test::ConfigurationWith(category));
    return {file, std::make_shared<const rules::Configuration>(std::vector<rules::Specialty>())};
}

std::vector<Finding> FindingsIn(const Draft& draft, const rules::CheckFacts& facts)
{
    return rules::Check(*draft.Snapshot(), {}, facts);
}

rules::Condition Copper()
{
    return Value(u"材质"_s, u"＝"_s, u"铜管"_s);
}

rules::Condition OtherPipe()
{
    return Value(u"材质"_s, u"＝"_s, u"PPR管"_s);
}

/// Another rule without fault, which nothing of the first one meets.
Rule OtherRule()
{
    Rule rule = PricedRule({OtherPipe()});
    rule.bills = {GoodBill(u"031001002001"_s)};
    rule.bills[0].quotas.clear();
    return rule;
}

Rule QuotaRule(std::vector<rules::QuotaItem> quotas)
{
    Rule rule = PricedRule({Copper()});
    rule.bills.clear();
    rule.quotas = std::move(quotas);
    return rule;
}

rules::CheckFacts QuotaMode()
{
    rules::CheckFacts facts = test::KnownFacts();
    facts.isBillMode = false;
    return facts;
}

/// Does the only mend that the findings of the category have, which is `op`; the edit's text. No finding
/// stays, and taking the edit back brings the rules back.
CString Mended(const rules::SmallCategory& category, const CString& op,
               const rules::CheckFacts& facts = test::KnownFacts())
{
    Draft draft = DraftOfCategory(category);
    const std::vector<Finding> findings = FindingsIn(draft, facts);
    EXPECT_EQ(findings.size(), 1U) << test::Codes(findings).join(u' ').toStdString();
    if (findings.empty() || !findings[0].mend) {
        ADD_FAILURE() << "no mend";
        return {};
    }
    EXPECT_EQ(findings[0].mend->op, op);
    const Edit edit = rules::MendEdit(draft, findings[0]);
    EXPECT_EQ(edit.splices.size(), 1U);
    draft.Apply(edit);
    EXPECT_EQ(test::Codes(FindingsIn(draft, facts)), CStringArray());
    draft.Revert(edit);
    EXPECT_EQ(draft.Find(test::PipeCategory)->rules, category.rules);
    return edit.text;
}

/// The same for a rule with another one behind it.
CString MendedRule(const Rule& rule, const CString& op, const rules::CheckFacts& facts = test::KnownFacts())
{
    Rule other = OtherRule();
    if (!facts.isBillMode) {
        other = QuotaRule({GoodQuota()});
        other.conditions[0].value = u"PPR管"_s;
    }
    return Mended(test::WithDefault({rule, other}), op, facts);
}

} // namespace

TEST(MendEdit, RuleThatNeverAppliesGoes)
{
    EXPECT_EQ(Mended(test::WithDefault({PricedRule({Copper()}), OtherRule(), PricedRule({Copper()})}),
                     u"DelConfig"_s),
              u"删除规则"_s);
}

TEST(MendEdit, SecondDefaultRuleGoes)
{
    rules::SmallCategory category = test::WithDefault({PricedRule({Copper()})});
    category.rules.push_back(category.rules.back());
    category.rules.back().id = 7;
    EXPECT_EQ(Mended(category, u"DelConfig"_s), u"删除规则"_s);
}

TEST(MendEdit, ConditionBecomesWhatItWasMeantToBe)
{
    EXPECT_EQ(MendedRule(PricedRule({Value(u"材质"_s, u"="_s, u"铜管"_s)}), u"ResetCondition"_s),
              u"条件改为 材质＝铜管"_s);
    EXPECT_EQ(MendedRule(PricedRule({Copper(), test::Range(u"壁厚"_s, u"＞"_s, u"3"_s, u"≤"_s, u"2"_s)}),
                         u"ResetCondition"_s),
              u"条件改为 2＜壁厚≤3"_s);
}

TEST(MendEdit, MultipleBecomesTheNumberInTheUnit)
{
    Rule rule = PricedRule({Copper()});
    rule.bills[0].record.strUnitCode = u"10"_s;
    EXPECT_EQ(MendedRule(rule, u"ResetQd"_s), u"修改清单 031001001001"_s);
    rule = PricedRule({Copper()});
    rule.bills[0].quotas[0].record.strUnitCode.clear();
    EXPECT_EQ(MendedRule(rule, u"ResetDeToQd"_s), u"修改定额 示10-1-7"_s);
    rule = QuotaRule({GoodQuota()});
    rule.quotas[0].record.strUnitCode = u"100"_s;
    EXPECT_EQ(MendedRule(rule, u"ResetDeToConfig"_s, QuotaMode()), u"修改定额 示10-1-7"_s);
}

TEST(MendEdit, ItemThatIsThereTwiceGoesOnce)
{
    Rule rule = PricedRule({Copper()});
    rule.bills.push_back(GoodBill(u"031001001001"_s, 2));
    EXPECT_EQ(MendedRule(rule, u"DelQd"_s), u"删除清单"_s);
    rule = PricedRule({Copper()});
    rule.bills[0].quotas.push_back(GoodQuota(u"示10-1-7"_s, 2));
    EXPECT_EQ(MendedRule(rule, u"DelDeInQdNode"_s), u"删除定额"_s);
    EXPECT_EQ(MendedRule(QuotaRule({GoodQuota(), GoodQuota(u"示10-1-7"_s, 2)}), u"DelDeInConfigNode"_s,
                         QuotaMode()),
              u"删除定额"_s);
}

TEST(MendEdit, FindingWithoutAMendOrWithoutItsObjectGivesNothing)
{
    const Draft draft = DraftOfCategory(test::WithDefault({PricedRule({Copper()})}));
    const auto isNothing = [&](const rules::Mend& mend, const CString& category = test::PipeCategory) {
        Finding finding{.category = category};
        finding.mend = mend;
        return rules::MendEdit(draft, finding).IsEmpty();
    };
    EXPECT_TRUE(rules::MendEdit(draft, {.category = test::PipeCategory}).IsEmpty());
    EXPECT_TRUE(isNothing({.op = u"Save"_s}));
    EXPECT_FALSE(isNothing({.op = u"DelConfig"_s, .configId = 2}));
    EXPECT_TRUE(isNothing({.op = u"DelConfig"_s, .configId = 3}));
    EXPECT_TRUE(isNothing({.op = u"DelConfig"_s, .configId = 2}, u"给排水"_s));
    EXPECT_TRUE(isNothing({.op = u"DelQd"_s, .configId = 2, .ids = {9}}));
    EXPECT_TRUE(isNothing({.op = u"DelDeInConfigNode"_s, .configId = 2, .ids = {1}}));
    EXPECT_TRUE(isNothing({.op = u"DelDeInQdNode"_s, .configId = 2, .deIdsByQd = {{1, {9}}, {2, {1}}}}));
    EXPECT_TRUE(isNothing({.op = u"ResetCondition"_s, .configId = 2, .conditionId = 9}));
    EXPECT_TRUE(isNothing({.op = u"ResetQd"_s, .configId = 2, .qdId = 9, .qd = QdStruct()}));
    EXPECT_TRUE(isNothing({.op = u"ResetDeToQd"_s, .configId = 2, .qdId = 9, .deId = 1, .de = DeStruct()}));
    EXPECT_TRUE(isNothing({.op = u"ResetDeToQd"_s, .configId = 2, .qdId = 1, .deId = 9, .de = DeStruct()}));
    EXPECT_TRUE(isNothing({.op = u"ResetDeToConfig"_s, .configId = 2, .deId = 1, .de = DeStruct()}));
}
