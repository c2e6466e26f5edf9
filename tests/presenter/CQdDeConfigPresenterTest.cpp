#include "presenter/CQdDeConfigPresenter.h"

#include "store/StoreTesting.h"
#include "support/ItemRecords.h"

#include "xml/Error.h"

#include <stdexcept>

using namespace Qt::StringLiterals;
using test::RulePath;

// The operations of a presenter on the rules and on the attribute records.

namespace {

CStringArray EightTexts(const CString& flag = u"1"_s)
{
    return {u"管径"_s, flag, u"＝"_s, u"＞"_s, u"≤"_s, u"DN50"_s, u"10"_s, u"20"_s};
}

/// A presenter on the rules 4 and 1. Rule 4 has the condition 5, the bill item 6 with the quota item 7, and
/// the quota item 8.
class Presenter : public test::FileFixture
{
protected:
    Presenter()
        : m_presenter(
              Put(u"r.xml"_s, test::RuleFile(test::PlumbingRules(
                                  u"<c id='4'><Condition><c id='5' strCFType='A'/></Condition><Qd><q id='6' "
                                  "strQdId='03'><De><d id='7'/></De></q></Qd><De><d id='8'/></De></c>"
                                  "<c id='1' bDefault='1'/>"_s))))
    {
    }

    static CPath Path(int deId = 7) { return CPath{1, 11, 111, 4, 5, 6, 0, deId}; }
    ConfigNode& Rule() { return *m_presenter.GetConfig(Path()); }
    std::vector<int> RuleIds()
    {
        std::vector<ConfigNode*> rules;
        EXPECT_TRUE(m_presenter.GetConfig(Path(), rules));
        return test::Ids(rules);
    }

    CQdDeConfigPresenter m_presenter;
    std::vector<ConfigNode*> m_rules;
    int m_newId = 0;
};

} // namespace

TEST_F(Presenter, SevenTextsAreNoConditionAndTheTreeKeepsItsOwn)
{
    const CStringArray seven = EightTexts().first(7);
    EXPECT_FALSE(m_presenter.AddCondition(Path(), seven));
    EXPECT_FALSE(m_presenter.ResetCondition(Path(), seven));
    EXPECT_FALSE(m_presenter.AddCondition(Path(), {}));
    EXPECT_EQ(Rule().GetConditionString(), u"A;"_s);
}

TEST_F(Presenter, EightTextsFillTheFieldsInOrder)
{
    EXPECT_TRUE(m_presenter.AddCondition(Path(), EightTexts()));
    ASSERT_EQ(Rule().GetCondition().size(), 2U);
    const ConditionNode& added = *Rule().GetCondition().back();
    EXPECT_EQ(added.GetId(), 6);
    EXPECT_EQ(added.GetCFType(), u"管径"_s);
    EXPECT_TRUE(added.IsEqual());
    EXPECT_EQ(added.GetEqualOperator(), u"＝"_s);
    EXPECT_EQ(added.GetRangeOperator1(), u"＞"_s);
    EXPECT_EQ(added.GetRangeOperator2(), u"≤"_s);
    EXPECT_EQ(added.GetValue(), u"DN50"_s);
    EXPECT_EQ(added.GetRange1(), u"10"_s);
    EXPECT_EQ(added.GetRange2(), u"20"_s);
}

TEST_F(Presenter, TextsBehindTheEighthAreIgnored)
{
    EXPECT_TRUE(m_presenter.AddCondition(Path(), EightTexts() + CStringArray{u"x"_s, u"y"_s}));
    EXPECT_EQ(Rule().GetConditionString(), u"A;管径＝DN50;"_s);
}

TEST_F(Presenter, FlagIsANumberOfWhichOnlyZeroIsFalse)
{
    const std::vector<std::pair<CString, bool>> cases{
        {u"0"_s, false}, {u"2"_s, true},     {u""_s, false},   {u"1"_s, true},  {u"-1"_s, true},
        {u"3x"_s, true}, {u"true"_s, false}, {u"00"_s, false}, {u" 1"_s, true},
    };
    for (const auto& [flag, isEqual] : cases) {
        EXPECT_TRUE(m_presenter.AddCondition(Path(), EightTexts(flag)));
        EXPECT_EQ(Rule().GetCondition().back()->IsEqual(), isEqual) << flag.toStdString();
    }
}

TEST_F(Presenter, ResettingAConditionReplacesItsFields)
{
    EXPECT_TRUE(m_presenter.ResetCondition(Path(), EightTexts(u"0"_s)));
    EXPECT_EQ(Rule().GetConditionString(), u"10＜管径≤20;"_s);
    EXPECT_EQ(Rule().GetCondition().front()->GetId(), 5);
    CPath unknown = Path();
    unknown.conditionId = 99;
    EXPECT_FALSE(m_presenter.ResetCondition(unknown, EightTexts()));
}

TEST_F(Presenter, ConditionsNeedARule)
{
    CPath nowhere = Path();
    nowhere.specId = 2;
    EXPECT_FALSE(m_presenter.AddCondition(nowhere, EightTexts()));
    EXPECT_FALSE(m_presenter.ResetCondition(nowhere, EightTexts()));
}

TEST_F(Presenter, ConditionsAreDeleted)
{
    EXPECT_TRUE(m_presenter.DelCondition(Path(), m_rules));
    EXPECT_TRUE(Rule().GetCondition().empty());
    EXPECT_EQ(test::Ids(m_rules), (std::vector<int>{4, 1}));
}

TEST_F(Presenter, RulesAreForwarded)
{
    EXPECT_TRUE(m_presenter.AddConfig(Path(), m_newId));
    EXPECT_EQ(m_newId, 5);
    EXPECT_TRUE(m_presenter.MoveDownConfig(Path()));
    EXPECT_EQ(RuleIds(), (std::vector<int>{5, 4, 1}));
    EXPECT_TRUE(m_presenter.MoveUpConfig(Path()));
    EXPECT_EQ(RuleIds(), (std::vector<int>{4, 5, 1}));
    EXPECT_TRUE(m_presenter.AddConfigByCopy(Path(), m_newId));
    EXPECT_EQ(m_newId, 6);
    EXPECT_TRUE(m_presenter.DelConfig(Path()));
    EXPECT_EQ(RuleIds(), (std::vector<int>{5, 6, 1}));
}

TEST_F(Presenter, MovingTheOnlyRuleDownRaisesTheIndexError)
{
    CPath path = Path();
    path.sMemberId = 112;
    EXPECT_THROW(m_presenter.MoveDownConfig(path), std::out_of_range);
}

TEST_F(Presenter, BillItemsAreForwarded)
{
    const QdStruct record = test::Qd(u"04"_s);
    EXPECT_TRUE(m_presenter.AddQd(record, Path(), m_rules));
    EXPECT_EQ(test::Ids(m_rules), (std::vector<int>{4, 1}));
    EXPECT_TRUE(m_presenter.ResetQd(Path(), record));
    std::vector<CString> numbers;
    EXPECT_TRUE(m_presenter.GetExistQdIndex(Path(), numbers));
    EXPECT_EQ(numbers, (std::vector<CString>{u"04"_s, u"04"_s}));
    EXPECT_TRUE(m_presenter.DelQd(Path(), {6}));
    EXPECT_EQ(Rule().GetQd().size(), 1U);
}

TEST_F(Presenter, QuotaItemsOfABillItemAreForwarded)
{
    const DeStruct record = test::De(u"C8"_s);
    EXPECT_TRUE(m_presenter.AddDe2QdNode(record, Path(), m_rules));
    EXPECT_EQ(test::Ids(m_rules), (std::vector<int>{4, 1}));
    EXPECT_TRUE(m_presenter.ResetDeToQd(Path(7), record));
    EXPECT_EQ(Rule().GetQd(6)->GetDe(7)->GetRecord().strDeId, u"C8"_s);
    EXPECT_TRUE(m_presenter.DelDeInQdNode(Path(), {{6, {7}}}));
    EXPECT_EQ(Rule().GetQd(6)->GetDe().size(), 1U);
}

TEST_F(Presenter, QuotaItemsOfARuleAreForwarded)
{
    const DeStruct record = test::De(u"C8"_s);
    EXPECT_TRUE(m_presenter.AddDe2ConfigNode(record, Path(), m_rules));
    EXPECT_EQ(test::Ids(m_rules), (std::vector<int>{4, 1}));
    EXPECT_TRUE(m_presenter.ResetDeToConfig(Path(8), record));
    EXPECT_EQ(Rule().GetDe(8)->GetRecord().strDeId, u"C8"_s);
    EXPECT_TRUE(m_presenter.DelDeInConfigNode(Path(), {8}));
    EXPECT_EQ(Rule().GetDe().size(), 1U);
}

TEST_F(Presenter, ForwardersSaveNothingUntilSave)
{
    const QByteArray before = Bytes(u"r.xml"_s);
    EXPECT_TRUE(m_presenter.AddConfig(Path(), m_newId));
    EXPECT_EQ(Bytes(u"r.xml"_s), before);
    EXPECT_TRUE(m_presenter.Save());
    EXPECT_NE(Bytes(u"r.xml"_s), before);
}

TEST_F(Presenter, ErrorsOfTheXmlLayerGoOnToTheCaller)
{
    CStringArray texts = EightTexts();
    texts[5] = CString(QChar(1));
    EXPECT_TRUE(m_presenter.AddCondition(Path(), texts));
    EXPECT_THROW(m_presenter.Save(), xml::Error);
    EXPECT_TRUE(Messages().Messages().empty());
}

TEST_F(Presenter, AttributeRecordsAreKeyedByCategoryAndAttributeWithNothingBetween)
{
    Put(u"app\\AttrConfig.xml"_s,
        u"<属性类型配置信息><给排水 name='给排水'><管道><给水管><CZ name='材质' namecode='CZ' "
        "vartype='1' compar='0' specrelation='1'/></给水管></管道></给排水></属性类型配置信息>"_s);
    CQdDeConfigPresenter presenter(File(u"r.xml"_s));
    AttrConfig config;
    EXPECT_TRUE(presenter.GetAttConfig(u"给排水\\管道\\给水管"_s, u"材质"_s, config));
    EXPECT_EQ(config.namecode, u"CZ"_s);
    EXPECT_EQ(config.compar, 0);
    config.compar = 1;
    EXPECT_TRUE(presenter.SetAttConfig(u"给排水\\管道\\给水管"_s, u"材质"_s, config));
    AttrConfig changed;
    EXPECT_TRUE(presenter.GetAttConfig(u"给排水\\管道\\给水"_s, u"管材质"_s, changed));
    EXPECT_EQ(changed.compar, 1);
}

TEST_F(Presenter, AbsentAttributeRecordIsFalseAndLeavesTheRecordGiven)
{
    AttrConfig config{u"n"_s, u"c"_s, 7, 8, 9};
    EXPECT_FALSE(m_presenter.GetAttConfig(u"给排水\\管道\\给水管"_s, u"材质"_s, config));
    EXPECT_EQ(config.compar, 8);
    EXPECT_FALSE(m_presenter.SetAttConfig(u"给排水\\管道\\给水管"_s, u"材质"_s, config));
}

TEST_F(Presenter, SavingTheAttributeRecordsRaisesThePointerErrorAtTheFirstAttribute)
{
    EXPECT_THROW(m_presenter.SaveAttConfig(), xml::PointerError);
    EXPECT_FALSE(Exists(u"app\\AttrConfig.xml"_s));
}

TEST_F(Presenter, SavingTheAttributeRecordsSucceedsWhereNoAttributeIsReached)
{
    for (const CString& id : {u"111"_s, u"121"_s})
        Host().SetAttributeList(id, {});
    EXPECT_TRUE(m_presenter.SaveAttConfig());
    EXPECT_TRUE(Exists(u"app\\AttrConfig.xml"_s));
}
