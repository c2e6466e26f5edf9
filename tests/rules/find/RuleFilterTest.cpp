#include "rules/find/RuleFilter.h"

#include "rules/CompareTesting.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using rules::Rule;
using rules::RuleQuery;
using rules::RuleTexts;
using test::Range;
using test::RuleOf;
using test::Value;

namespace {

using Places = std::vector<std::size_t>;

const CStringArray Attributes{u"材质"_s, u"公称直径"_s, u"周长(mm)"_s};

/// Rules of one condition each, on the nominal diameter.
std::vector<Rule> Diameters()
{
    const CString name = u"公称直径"_s;
    return {RuleOf({Range(name, u"＞"_s, u"50"_s, u"≤"_s, u"65"_s)}),
            RuleOf({Range(name, u"＞"_s, u"65"_s, u"≤"_s, u"80"_s)}),
            RuleOf({Value(name, u"＝"_s, u"65"_s)}),
            RuleOf({Value(name, u"＝"_s, u"DN65"_s)}),
            RuleOf({Value(name, u"≠"_s, u"65"_s)}),
            RuleOf({Value(name, u"≠"_s, u"50"_s)}),
            RuleOf({Value(u"材质"_s, u"＝"_s, u"65"_s)}),
            RuleOf({}),
            RuleOf({Range(name, u"＞"_s, u"50"_s, {}, {})}, true)};
}

Places Found(const std::vector<Rule>& rules, const CString& text, const CStringArray& valueList = {})
{
    const rules::CategoryFacts facts{{.name = u"公称直径"_s, .valueList = valueList}};
    return RuleTexts(test::CategoryOf(rules), facts).Find(RuleQuery(text, Attributes));
}

/// What is found among rules whose texts are these: of the first condition on 材质, bill, quota below it.
std::vector<Rule> Pipes()
{
    Rule steel =
        RuleOf({Value(u"材质"_s, u"＝"_s, u"镀锌钢管"_s), Range(u"公称直径"_s, {}, {}, u"≤"_s, u"65"_s)});
    steel.bills = {test::Bill(u"031001001001"_s, {}, {test::Quota(u"C10-1-7"_s)})};
    Rule plastic = RuleOf({Value(u"材质"_s, u"＝"_s, u"ＰＰＲ管"_s)});
    plastic.bills = {test::Bill(u"031001006001"_s)};
    plastic.bills[0].record.strName = u"塑料管 Φ20"_s;
    Rule copper = RuleOf({Value(u"材质"_s, u"≠"_s, u"铜管"_s)});
    copper.quotas = {test::Quota(u"示9-1"_s)};
    return {steel, plastic, copper, RuleOf({}, true)};
}

} // namespace

TEST(RuleFilter, EmptyQueryFindsAll)
{
    EXPECT_TRUE(RuleQuery().IsEmpty());
    EXPECT_TRUE(RuleQuery(u" \u3000 "_s, Attributes).IsEmpty());
    EXPECT_FALSE(RuleQuery(u"a"_s, Attributes).IsEmpty());
    EXPECT_FALSE(RuleQuery(u"材质 a"_s, Attributes).IsEmpty());
    EXPECT_EQ(Found(Pipes(), {}), (Places{0, 1, 2, 3}));
    EXPECT_EQ(Found({}, {}), Places{});
    EXPECT_EQ(Found({}, u"a"_s), Places{});
}

TEST(RuleFilter, WordIsFoundInConditionsNumbersAndNames)
{
    EXPECT_EQ(Found(Pipes(), u"镀锌"_s), Places{0});
    EXPECT_EQ(Found(Pipes(), u"0310010"_s), (Places{0, 1}));
    EXPECT_EQ(Found(Pipes(), u"名称031001001001"_s), Places{0});
    EXPECT_EQ(Found(Pipes(), u"塑料"_s), Places{1});
    EXPECT_EQ(Found(Pipes(), u"10-1-7"_s), Places{0});
    EXPECT_EQ(Found(Pipes(), u"示9-1"_s), Places{2});
    EXPECT_EQ(Found(Pipes(), u"其它"_s), Places{3});
    EXPECT_EQ(Found(Pipes(), u"管"_s), (Places{0, 1, 2})) << "one character";
    EXPECT_EQ(Found(Pipes(), u"65031001"_s), Places{}) << "not across two texts";
}

TEST(RuleFilter, AllWordsMustBeFoundAnywhereInTheRule)
{
    EXPECT_EQ(Found(Pipes(), u"管 0310"_s), (Places{0, 1}));
    EXPECT_EQ(Found(Pipes(), u"0310 镀锌 c10"_s), Places{0});
    EXPECT_EQ(Found(Pipes(), u"塑料管 镀锌"_s), Places{});
    EXPECT_EQ(Found(Pipes(), u"塑料管\u3000Φ20"_s), Places{1});
}

TEST(RuleFilter, CaseAndWidthDoNotCount)
{
    EXPECT_EQ(Found(Pipes(), u"ppr"_s), Places{1});
    EXPECT_EQ(Found(Pipes(), u"ＰＰr管"_s), Places{1});
    EXPECT_EQ(Found(Pipes(), u"φ２０"_s), Places{1});
    EXPECT_EQ(Found(Pipes(), u"ｃ10"_s), Places{0});
    const std::vector<Rule> rules{RuleOf({Value(u"单位"_s, u"＝"_s, u"m²"_s)})};
    EXPECT_EQ(Found(rules, u"M2"_s), Places{0});
    EXPECT_EQ(Found(rules, u"㎡"_s), Places{0});
}

TEST(RuleFilter, SignsMayBeTypedAsKeyboardsHaveThem)
{
    EXPECT_EQ(Found(Pipes(), u"公称直径<=65"_s), Places{0});
    EXPECT_EQ(Found(Pipes(), u"公称直径≤65"_s), Places{0});
    EXPECT_EQ(Found(Pipes(), u"公称直径 ＜＝65"_s), Places{0});
    EXPECT_EQ(Found(Pipes(), u"材质!=铜管"_s), Places{2});
    EXPECT_EQ(Found(Pipes(), u"材质 <>铜"_s), Places{2});
    EXPECT_EQ(Found(Diameters(), u"50＜公称直径"_s), Places{0});
    EXPECT_EQ(Found(Diameters(), u"50<公称直径<=65"_s), Places{0});
}

TEST(RuleFilter, ValueOfAnAttributeFindsTheRangeThatHoldsIt)
{
    for (const CString& text : {u"公称直径 65"_s, u"公称直径=65"_s, u"公称直径＝65"_s, u"公称直径＝ ６５.0"_s,
                                u"公称直径 ＝65"_s, u"公称直径 = 65"_s})
        EXPECT_EQ(Found(Diameters(), text), (Places{0, 2, 5})) << text.toStdString();
    EXPECT_EQ(Found(Diameters(), u"公称直径 66"_s), (Places{1, 4, 5}));
    EXPECT_EQ(Found(Diameters(), u"公称直径 大"_s), (Places{4, 5}));
    EXPECT_EQ(Found(Diameters(), u"公称直径 6"_s), (Places{4, 5})) << "a number is no part of another";
}

TEST(RuleFilter, NumberMayBeWrittenWithOrWithoutWhatTheValueListHasAroundIt)
{
    const CStringArray list{u"DN15"_s, u"DN65"_s};
    EXPECT_EQ(Found(Diameters(), u"公称直径 DN65"_s), (Places{3, 4, 5}))
        << "nothing says that it is a number";
    for (const CString& text :
         {u"公称直径 65"_s, u"公称直径 DN65"_s, u"公称直径 dn65"_s, u"公称直径=ＤＮ６５"_s})
        EXPECT_EQ(Found(Diameters(), text, list), (Places{0, 2, 3, 5})) << text.toStdString();
}

TEST(RuleFilter, TextIsFoundWhileItIsBeingTyped)
{
    EXPECT_EQ(Found(Pipes(), u"材质"_s), (Places{0, 1, 2})) << "rules that speak of the attribute";
    EXPECT_EQ(Found(Pipes(), u"材质 "_s), (Places{0, 1, 2}));
    EXPECT_EQ(Found(Pipes(), u"材质="_s), (Places{0, 1, 2}));
    EXPECT_EQ(Found(Pipes(), u"材质 ="_s), (Places{0, 1, 2}));
    EXPECT_EQ(Found(Pipes(), u"材质 镀"_s), (Places{0, 2}));
    EXPECT_EQ(Found(Pipes(), u"材质=镀锌"_s), (Places{0, 2}));
    EXPECT_EQ(Found(Pipes(), u"材质 镀锌钢管"_s), (Places{0, 2}));
    EXPECT_EQ(Found(Pipes(), u"材质 铜管"_s), Places{}) << "≠ does not hold for it";
    EXPECT_EQ(Found(Pipes(), u"材质 ppr管"_s), (Places{1, 2}));
}

TEST(RuleFilter, AttributeThatIsFollowedByAnotherOneIsAWord)
{
    EXPECT_EQ(Found(Pipes(), u"材质 公称直径 50"_s), Places{0});
    EXPECT_EQ(Found(Pipes(), u"材质 镀锌 公称直径 50"_s), Places{0});
    EXPECT_EQ(Found(Pipes(), u"材质= 公称直径 50"_s), Places{0});
    EXPECT_EQ(Found(Pipes(), u"公称直径 50 0310 材质 钢"_s), Places{0});
    EXPECT_EQ(Found(Pipes(), u"公称直径 80 材质 钢"_s), Places{});
}

TEST(RuleFilter, NamesOfAttributesAreTakenInAnyWidthAndCase)
{
    const std::vector<Rule> rules{RuleOf({Value(u"周长（mm）"_s, u"＝"_s, u"800"_s)}),
                                  RuleOf({Value(u"周长(mm)"_s, u"＝"_s, u"900"_s)}), RuleOf({})};
    EXPECT_EQ(Found(rules, u"周长（MM） 800"_s), Places{0});
    EXPECT_EQ(Found(rules, u"周长(mm)=900"_s), Places{1});
}

TEST(RuleFilter, RuleThatCannotApplyIsFoundByItsOtherConditions)
{
    const std::vector<Rule> rules{
        RuleOf({Range(u"公称直径"_s, {}, {}, u"≤"_s, u"65"_s), Value(u"材质"_s, u"="_s, u"铜管"_s)})};
    EXPECT_EQ(Found(rules, u"公称直径 50"_s), Places{0});
    EXPECT_EQ(Found(rules, u"材质 铜管"_s), Places{}) << "its condition holds for nothing";
    EXPECT_EQ(Found(rules, u"材质="_s), Places{0});
}

TEST(RuleFilter, WhetherAnyIsFound)
{
    const RuleTexts texts(test::CategoryOf(Pipes()), {});
    EXPECT_EQ(texts.Category()->rules.size(), 4U);
    EXPECT_TRUE(texts.Holds(RuleQuery(u"塑料"_s, Attributes)));
    EXPECT_FALSE(texts.Holds(RuleQuery(u"铸铁"_s, Attributes)));
}

TEST(AttributeNames, ThoseOfFactsAndConditionsEachOnce)
{
    const rules::CatalogueFacts facts{{u"甲"_s, {{.name = u"材质"_s}, {.name = u"周长(mm)"_s}}},
                                      {u"乙"_s, {{.name = u"材质"_s}}}};
    const auto configuration =
        test::Pipes({RuleOf({Value(u"周长（mm）"_s, {}, {}), Value(u"壁厚"_s, {}, {})}),
                     RuleOf({Value(u" "_s, {}, {}), Value(u"壁厚"_s, {}, {})})});
    CStringArray names = rules::AttributeNames(configuration, facts);
    names.sort();
    EXPECT_EQ(names, (CStringArray{u"周长(mm)"_s, u"壁厚"_s, u"材质"_s}));
}
