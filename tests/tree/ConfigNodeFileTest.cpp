#include "tree/ConfigNode.h"

#include "TreeTesting.h"

using namespace Qt::StringLiterals;

// How a rule is written to a file and read from one.

TEST(ConfigNodeFile, CounterTooLowForABillItemIsRaised)
{
    ConfigNode rule;
    EXPECT_TRUE(test::Read(rule, u"<Config LastQdId='2'><Qd><qd id='5'/><qd id='1'/></Qd></Config>"_s));
    EXPECT_EQ(rule.GetLastQdId(), 5);
}

TEST(ConfigNodeFile, CounterTooHighIsKept)
{
    ConfigNode rule;
    EXPECT_TRUE(test::Read(rule, u"<Config LastDeId='9'><De/></Config>"_s));
    EXPECT_EQ(rule.GetLastDeId(), 9);
    EXPECT_TRUE(rule.GetDe().empty());
}

TEST(ConfigNodeFile, EveryCounterIsRaisedByTheIdsFound)
{
    ConfigNode rule;
    test::Read(rule, u"<Config LastConditionId='1' LastDeId='x'><Condition><c id='4'/></Condition>"
                     "<Qd><q id='3'/></Qd><De><d id='6'/><d id='2'/></De></Config>"_s);
    EXPECT_EQ(rule.GetLastConditionId(), 4);
    EXPECT_EQ(rule.GetLastQdId(), 3);
    EXPECT_EQ(rule.GetLastDeId(), 6);
}

TEST(ConfigNodeFile, ReadingReplacesCountersAndFlag)
{
    ConfigNode rule;
    rule.SetLastQdId(7);
    rule.SetDefault(true);
    EXPECT_TRUE(test::Read(rule, u"<Config id='3'/>"_s));
    EXPECT_EQ(rule.GetId(), 3);
    EXPECT_EQ(rule.GetLastQdId(), 0);
    EXPECT_FALSE(rule.IfDefault());
}

TEST(ConfigNodeFile, DefaultFlagIsAnyNumberButZero)
{
    const std::vector<std::pair<CString, bool>> cases{
        {u"1"_s, true},  {u"2"_s, true},   {u"-1"_s, true},    {u"1x"_s, true},
        {u"0"_s, false}, {u"00"_s, false}, {u"true"_s, false}, {u""_s, false},
    };
    for (const auto& [text, isDefault] : cases) {
        ConfigNode rule;
        test::Read(rule, u"<Config bDefault='"_s + text + u"'/>"_s);
        EXPECT_EQ(rule.IfDefault(), isDefault) << text.toStdString();
    }
}

TEST(ConfigNodeFile, WithoutContainersTheRuleIsEmpty)
{
    ConfigNode rule;
    EXPECT_TRUE(
        test::Read(rule, u"<config id='1' bDefault='1' LastQdId='0' LastConditionId='0' LastDeId='0'/>"_s));
    EXPECT_EQ(rule.GetId(), 1);
    EXPECT_TRUE(rule.IfDefault());
    EXPECT_TRUE(rule.GetCondition().empty() && rule.GetQd().empty() && rule.GetDe().empty());
}

TEST(ConfigNodeFile, ContainersAreFoundByTheirExactNames)
{
    ConfigNode rule;
    test::Read(rule, u"<Config><condition><condition id='1'/></condition><qd><qd id='1'/></qd>"
                     "<de><De id='1'/></de></Config>"_s);
    EXPECT_TRUE(rule.GetCondition().empty() && rule.GetQd().empty() && rule.GetDe().empty());
}

TEST(ConfigNodeFile, ChildrenCountWhateverTheirNames)
{
    ConfigNode rule;
    test::Read(rule, u"<Config><Condition><a id='1' strCFType='T'/><Condition id='2'/></Condition>"
                     "<Qd><b id='1' strQdId='03'/></Qd><De><c id='1' strDeId='C8'/></De></Config>"_s);
    EXPECT_EQ(test::Ids(rule.GetCondition()), (std::vector<int>{1, 2}));
    EXPECT_EQ(rule.GetCondition().front()->GetCFType(), u"T"_s);
    EXPECT_EQ(rule.GetQd(1)->GetRecord().strQdId, u"03"_s);
    EXPECT_EQ(rule.GetDe(1)->GetRecord().strDeId, u"C8"_s);
}

TEST(ConfigNodeFile, ContainersAreReadInWhateverOrderTheyStand)
{
    ConfigNode rule;
    test::Read(rule, u"<Config><De><De id='3'/></De><x/><Qd><qd id='2'/></Qd><!--c-->"
                     "<Condition><condition id='1'/></Condition></Config>"_s);
    EXPECT_EQ(test::Ids(rule.GetCondition()), std::vector<int>{1});
    EXPECT_EQ(test::Ids(rule.GetQd()), std::vector<int>{2});
    EXPECT_EQ(test::Ids(rule.GetDe()), std::vector<int>{3});
}

TEST(ConfigNodeFile, AnyNodeInAContainerReadsAsAnEmptyChildWithIdZero)
{
    ConfigNode rule;
    EXPECT_TRUE(test::Read(rule, u"<Config><Condition><!--c--><condition id='2'/></Condition>"
                                 "<Qd>文</Qd><De><?p i?><![CDATA[x]]></De></Config>"_s));
    EXPECT_EQ(test::Ids(rule.GetCondition()), (std::vector<int>{0, 2}));
    EXPECT_EQ(test::Ids(rule.GetQd()), std::vector<int>{0});
    EXPECT_EQ(test::Ids(rule.GetDe()), (std::vector<int>{0, 0}));
}

TEST(ConfigNodeFile, ChildrenReadHaveTheRuleAsParent)
{
    ConfigNode rule;
    test::Read(rule, u"<Config><Condition><c/></Condition><Qd><q/></Qd><De><d/></De></Config>"_s);
    EXPECT_EQ(rule.GetCondition().front()->GetParent(), &rule);
    EXPECT_EQ(rule.GetQd().front()->GetParent(), &rule);
    EXPECT_EQ(rule.GetDe().front()->GetParent(), &rule);
}

TEST(ConfigNodeFile, RepeatedIdsAreKeptAndTheFirstIsFound)
{
    ConfigNode rule;
    test::Read(rule, u"<Config><Condition><c id='1' strCFType='a'/><c id='1' strCFType='b'/></Condition>"
                     "<Qd><q id='1' strQdId='a'/><q id='1' strQdId='b'/></Qd>"
                     "<De><d id='1' strDeId='a'/><d id='1' strDeId='b'/></De></Config>"_s);
    EXPECT_EQ(rule.GetQd(1)->GetRecord().strQdId, u"a"_s);
    EXPECT_EQ(rule.GetDe(1)->GetRecord().strDeId, u"a"_s);
    EXPECT_TRUE(rule.DelCondition(1));
    ASSERT_EQ(rule.GetCondition().size(), 1U);
    EXPECT_EQ(rule.GetCondition().front()->GetCFType(), u"b"_s);
}

TEST(ConfigNodeFile, CommentReadsAsAnEmptyRule)
{
    ConfigNode rule;
    rule.SetId(8);
    EXPECT_TRUE(rule.ReadData(test::CommentNode()));
    EXPECT_EQ(rule.GetId(), 0);
    EXPECT_FALSE(rule.IfDefault());
    EXPECT_TRUE(rule.GetQd().empty());
}

TEST(ConfigNodeFile, EmptyRuleIsWrittenWithItsThreeContainers)
{
    ConfigNode rule;
    rule.SetId(2);
    rule.SetLastQdId(3);
    rule.SetLastConditionId(4);
    rule.SetLastDeId(5);
    EXPECT_EQ(test::Written(rule),
              u"<n id=\"2\" LastQdId=\"3\" LastConditionId=\"4\" bDefault=\"0\" LastDeId=\"5\">\n"
              " <Condition>\n <Qd>\n <De>\n"_s);
}

TEST(ConfigNodeFile, DefaultFlagIsWrittenAsOne)
{
    ConfigNode rule;
    rule.SetDefault(true);
    EXPECT_TRUE(test::Written(rule).contains(u" bDefault=\"1\" "_s));
}

TEST(ConfigNodeFile, ChildrenAreWrittenInListOrderUnderTheirOwnNames)
{
    ConfigNode rule;
    rule.AddCondition(ConditionNode());
    rule.AddCondition(ConditionNode());
    rule.AddQd(QdStruct{});
    rule.AddDe(DeStruct{});
    CStringArray tags;
    for (const CString& line : test::Written(rule).split(u'\n', Qt::SkipEmptyParts))
        tags << line.section(u'>', 0, 0).section(u" strCF"_s, 0, 0).section(u" str"_s, 0, 0);
    EXPECT_EQ(tags.mid(1),
              CStringArray({u" <Condition"_s, u"  <condition id=\"1\""_s, u"  <condition id=\"2\""_s,
                            u" <Qd"_s, u"  <qd id=\"1\""_s, u"   <De"_s, u" <De"_s, u"  <De id=\"1\""_s}));
}

TEST(ConfigNodeFile, WholeRuleSurvivesAFile)
{
    ConfigNode rule;
    rule.SetId(6);
    rule.AddCondition(ConditionNode(u"管径"_s, false, {}, u"≥"_s, u"＜"_s, {}, u"10"_s, u"20"_s));
    rule.AddQd({u"03"_s, {}, u"管"_s, u"m"_s, u"1"_s, {}, u"QD"_s, u"L"_s, u"是"_s});
    rule.GetQd(1)->AddDe({u"安装"_s, u"10m"_s, u"10"_s, u"C8"_s, u"DE"_s, u"L/10"_s, u"否"_s});
    rule.AddDe({u"直接"_s, u"m"_s, u"1"_s, u"C9"_s, u"DE"_s, u"L"_s, {}});
    ConfigNode read;
    test::RoundTrip(rule, read);
    EXPECT_EQ(test::Written(read), test::Written(rule));
    EXPECT_EQ(read.GetConditionString(), u"10≤管径＜20;"_s);
}
