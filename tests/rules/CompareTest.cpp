#include "rules/CompareTesting.h"
#include "rules/model/Snapshot.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <numeric>
#include <random>

using namespace Qt::StringLiterals;
using rules::Rule;
using test::DefaultRule;
using test::FourRules;
using test::PipeRule;
using test::Pipes;

namespace {

CString Difference(const std::vector<Rule>& before, const std::vector<Rule>& after)
{
    return rules::DifferenceLines(rules::Compare(Pipes(before), Pipes(after))).join(u'\n');
}

std::vector<Rule> WithIds(std::vector<Rule> rules, const std::vector<int>& ids)
{
    for (std::size_t i = 0; i < rules.size(); ++i)
        rules[i].id = ids[i];
    return rules;
}

} // namespace

TEST(Compare, EqualStatesHaveNoDifferences)
{
    EXPECT_TRUE(rules::Compare(Pipes(FourRules), Pipes(FourRules)).HasNoDifferences());
    EXPECT_EQ(Difference(FourRules, FourRules), u"规则没有差别。"_s);
}

TEST(Compare, AddedRuleIsToldWithItsPlaceAndItems)
{
    std::vector<Rule> after = FourRules;
    Rule added = PipeRule(5, u"铸铁管"_s, u"09"_s);
    added.bills[0].quotas = {test::Quota(u"8-1"_s, u"管道长度"_s)};
    after.insert(after.begin() + 1, added);
    EXPECT_EQ(Difference(FourRules, after),
              u"给排水\\管道\\给水管\n  加了第 2 条：材质＝铸铁管;\n      清单 09 名称09（m）\n"
              "        定额 8-1 名称8-1：管道长度\n\n规则：加了 1 条。"_s);
}

TEST(Compare, RemovedRuleIsToldWithItsFormerPlace)
{
    EXPECT_EQ(
        Difference(FourRules, {FourRules[0], FourRules[2], FourRules[3]}),
        u"给排水\\管道\\给水管\n  删了原第 2 条：材质＝铜管;\n      清单 02 名称02（m）\n\n规则：删了 1 条。"_s);
}

TEST(Compare, ChangedConditionsAndItemsAreToldOneByOne)
{
    std::vector<Rule> after = FourRules;
    after[0].conditions[0].value = u"无缝钢管"_s;
    after[0].conditions.push_back(test::Range(u"公称直径"_s, u"＞"_s, u"50"_s, u"≤"_s, u"65"_s));
    after[0].bills[0].record.strFormula = u"管道长度"_s;
    after[0].bills[0].quotas = {test::Quota(u"8-1"_s)};
    after[0].bills.push_back(test::Bill(u"05"_s, u"个数"_s));
    after[1].conditions.clear();
    after[1].bills.clear();
    EXPECT_EQ(Difference(FourRules, after), u"给排水\\管道\\给水管\n"
                                            "  改了第 1 条：材质＝无缝钢管;50＜公称直径≤65;\n"
                                            "      条件 材质＝钢管 改为 材质＝无缝钢管\n"
                                            "      加上条件 50＜公称直径≤65\n"
                                            "      清单 01 名称01：工程量 （空） 改为 管道长度\n"
                                            "        加上定额 8-1 名称8-1\n"
                                            "      加上清单 05 名称05（m）：个数\n"
                                            "  改了第 2 条：（无条件）\n"
                                            "      去掉条件 材质＝铜管\n"
                                            "      去掉清单 02 名称02（m）\n\n"
                                            "规则：改了 2 条。"_s);
}

TEST(Compare, QuotaItemsOfQuotaModeAndHiddenFieldsAreToldToo)
{
    Rule before = PipeRule(2, u"钢管"_s, u"01"_s);
    before.quotas = {test::Quota(u"1-1"_s, u"a"_s), test::Quota(u"1-2"_s)};
    Rule after = before;
    after.quotas = {after.quotas[1], after.quotas[0]};
    after.quotas[1].record.strFormula = u"b"_s;
    after.conditions[0].lowerBound = u"leftover"_s;
    EXPECT_EQ(Difference({before, DefaultRule()}, {after, DefaultRule()}),
              u"给排水\\管道\\给水管\n  改了第 1 条：材质＝钢管;\n      条件 材质＝钢管 不显示的内容变了\n"
              "      定额 1-1 名称1-1：工程量 a 改为 b\n      定额项的次序变了\n\n规则：改了 1 条。"_s);
}

TEST(Compare, OrderOfConditionsIsToldWhenNothingElseChanged)
{
    Rule before = test::RuleOf({test::Value(u"a"_s, u"＝"_s, u"1"_s), test::Value(u"b"_s, u"＝"_s, u"2"_s)});
    Rule after = before;
    std::swap(after.conditions[0], after.conditions[1]);
    EXPECT_EQ(
        Difference({before, DefaultRule()}, {after, DefaultRule()}),
        u"给排水\\管道\\给水管\n  改了第 1 条：b＝2;a＝1;\n      条件的次序变了\n\n规则：改了 1 条。"_s);
}

TEST(Compare, RuleThatStandsElsewhereHasMovedAndNoOther)
{
    EXPECT_EQ(
        Difference(FourRules, {FourRules[2], FourRules[0], FourRules[1], FourRules[3]}),
        u"给排水\\管道\\给水管\n  移动了第 1 条（从第 3 条移来）：材质＝PPR管;\n\n规则：移动了 1 条。"_s);
}

TEST(Compare, AsFewRulesAsPossibleHaveMoved)
{
    const unsigned seed = std::random_device{}();
    std::printf("seed %u\n", seed);
    std::mt19937 random(seed);
    for (int round = 0; round < 200; ++round) {
        std::vector<int> places(2 + random() % 6);
        std::iota(places.begin(), places.end(), 0);
        std::shuffle(places.begin(), places.end(), random);
        const std::vector<bool> moved = rules::FindMoved(places);
        std::vector<int> rest;
        for (std::size_t i = 0; i < places.size(); ++i)
            if (!moved[i]) rest.push_back(places[i]);
        EXPECT_TRUE(std::is_sorted(rest.begin(), rest.end()));
        std::size_t longest = 0; // of all choices
        for (unsigned choice = 0; choice < 1U << places.size(); ++choice) {
            std::vector<int> chosen;
            for (std::size_t i = 0; i < places.size(); ++i)
                if ((choice >> i & 1U) != 0) chosen.push_back(places[i]);
            if (std::is_sorted(chosen.begin(), chosen.end())) longest = std::max(longest, chosen.size());
        }
        EXPECT_EQ(rest.size(), longest);
    }
}

TEST(Compare, RuleIsRecognisedByItsContentWhereIdsWereGivenAnew)
{
    // One rule more at the front, and everything behind it numbered anew.
    std::vector<Rule> after = FourRules;
    after.insert(after.begin(), PipeRule(0, u"铸铁管"_s, u"09"_s));
    after = WithIds(after, {2, 3, 4, 5, 1});
    EXPECT_EQ(Difference(FourRules, after),
              u"给排水\\管道\\给水管\n  加了第 1 条：材质＝铸铁管;\n      清单 09 名称09（m）\n\n"
              "规则：加了 1 条。\n另有 3 条规则只换了编号。"_s);
    EXPECT_EQ(Difference(FourRules, WithIds(FourRules, {12, 13, 14, 15})),
              u"规则没有差别。\n另有 4 条规则只换了编号。"_s);
}

TEST(Compare, RuleWithANewIdAndOneChangeIsRecognisedByTheRest)
{
    std::vector<Rule> after = WithIds(FourRules, {12, 13, 14, 1});
    after[0].bills[0].record.strFormula = u"管道长度"_s;
    after[1].conditions.push_back(test::Value(u"连接方式"_s, u"＝"_s, u"焊接"_s));
    EXPECT_EQ(Difference(FourRules, after), u"给排水\\管道\\给水管\n"
                                            "  改了第 1 条：材质＝钢管;\n"
                                            "      清单 01 名称01：工程量 （空） 改为 管道长度\n"
                                            "  改了第 2 条：材质＝铜管;连接方式＝焊接;\n"
                                            "      加上条件 连接方式＝焊接\n\n"
                                            "规则：改了 2 条。\n另有 1 条规则只换了编号。"_s);
}

TEST(Compare, CopyOfARuleThatWasChangedAfterwardsIsTheOneAdded)
{
    std::vector<Rule> after = FourRules;
    after.insert(after.begin() + 3, FourRules[0]);
    after[3].id = 5;
    after[0].conditions[0].value = u"无缝钢管"_s;
    const CString told = Difference(FourRules, after);
    EXPECT_TRUE(told.contains(u"改了第 1 条：材质＝无缝钢管;"_s)) << told.toStdString();
    EXPECT_TRUE(told.contains(u"加了第 4 条：材质＝钢管;"_s)) << told.toStdString();
}

TEST(Compare, IdOfADeletedRuleThatIsGivenAgainMakesNoChangedRule)
{
    Rule other = test::RuleOf({test::Value(u"长边"_s, u"＝"_s, u"5"_s)});
    other.id = 4;
    other.bills = {test::Bill(u"77"_s)};
    const rules::Comparison comparison =
        rules::Compare(Pipes(FourRules), Pipes({FourRules[0], FourRules[1], other, FourRules[3]}));
    EXPECT_EQ(comparison.Added(), 1U);
    EXPECT_EQ(comparison.Removed(), 1U);
    EXPECT_EQ(comparison.Changed(), 0U);
}

TEST(Compare, CategoryWithRulesThatOnlyOneStateHasIsToldRuleByRule)
{
    const rules::Configuration none = test::ConfigurationOf({});
    EXPECT_EQ(
        rules::DifferenceLines(rules::Compare(none, Pipes({FourRules[0], FourRules[3]}))).join(u'\n'),
        u"给排水\\管道\\给水管\n  加了第 1 条：材质＝钢管;\n      清单 01 名称01（m）\n\n规则：加了 1 条。"_s);
    EXPECT_EQ(
        rules::DifferenceLines(rules::Compare(Pipes({FourRules[0], FourRules[3]}), none)).join(u'\n'),
        u"给排水\\管道\\给水管\n  删了原第 1 条：材质＝钢管;\n      清单 01 名称01（m）\n\n规则：删了 1 条。"_s);
}

TEST(Compare, DefaultRulesThatTheDialogsCompleteAreOneLine)
{
    const QByteArray head =
        "<自动套清单定额配置信息><给排水 id=\"1\" name=\"给排水\"><LMember id=\"11\" name=\"管道\">";
    const QByteArray tail = "</LMember></给排水></自动套清单定额配置信息>";
    const QByteArray rule = "<Config id=\"2\" bDefault=\"0\"/>";
    const QByteArray bare = "<Config id=\"1\" bDefault=\"1\"/>";
    const auto small = [](const QByteArray& name, const QByteArray& rules) {
        return "<SMember name=\"" + name + "\"><Config>" + rules + "</Config></SMember>";
    };
    CString reason;
    const auto before = rules::ReadRules(head + small("甲", rule) + small("乙", bare) + tail, reason);
    const auto after = rules::ReadRules(head + small("丙", bare) + small("丁", bare) +
                                            small("甲", rule + bare) + small("乙", bare) + tail,
                                        reason);
    ASSERT_TRUE(before && after) << reason.toStdString();
    EXPECT_EQ(rules::DifferenceLines(rules::Compare(*before, *after)).join(u'\n'),
              u"规则没有差别。\n补上了 3 个小类的空默认规则（打开并关闭配置就会补上）。"_s);
    EXPECT_EQ(rules::DifferenceLines(rules::Compare(*after, *before)).join(u'\n'),
              u"规则没有差别。\n少了 2 个小类，它们只有空的默认规则。"_s);
}
