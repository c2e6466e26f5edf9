#include "store/CXmlQdDeConfig.h"

#include "StoreTesting.h"
#include "support/ItemRecords.h"

#include <functional>
#include <stdexcept>

using namespace Qt::StringLiterals;
using test::De;
using test::Qd;
using test::RulePath;

// The operations that take a path.

namespace {

/// A store on 给水管 with the rules 2, 3 and the default rule 1. Rule 2 has the condition 5, the bill item 6
/// with the quota items 7 and 8, and the quota items 7 and 9.
class StorePaths : public test::FileFixture
{
protected:
    StorePaths()
        : m_store(Put(u"r.xml"_s, test::RuleFile(test::PlumbingRules(
                                      u"<c id='2'><Condition><c id='5' strCFType='A' "
                                      u"bEqual='true'/></Condition><Qd><q id='6' "
                                      "strQdId='03'><De><d id='7'/><d id='8'/></De></q></Qd><De><d "
                                      "id='7'/><d id='9'/></De></c>"
                                      "<c id='3'/><c id='1' bDefault='1'/>"_s))),
                  u"给排水"_s)
    {
    }

    /// The path of rule 2, of its condition, its bill item and of a quota item.
    static CPath Path(int deId = 7) { return CPath{1, 11, 111, 2, 5, 6, 0, deId}; }

    std::vector<int> RuleIds()
    {
        std::vector<ConfigNode*> rules;
        EXPECT_TRUE(m_store.GetConfig(Path(), rules));
        return test::Ids(rules);
    }

    ConfigNode& Rule() { return *m_store.GetConfig(Path()); }

    /// Every operation that resolves a path and gives a bool, apart from `DelDeInQdNode`.
    std::vector<std::function<bool(const CPath&)>> Operations()
    {
        return {
            [this](const CPath& path) { return m_store.GetConfig(path) != nullptr; },
            [this](const CPath& path) { return m_store.GetConfig(path, m_rules); },
            [this](const CPath& path) { return m_store.GetExistQdIndex(path, m_indexes); },
            [this](const CPath& path) { return m_store.AddConfig(path, m_newId); },
            [this](const CPath& path) { return m_store.MoveUpConfig(path); },
            [this](const CPath& path) { return m_store.MoveDownConfig(path); },
            [this](const CPath& path) { return m_store.AddConfigByCopy(path, m_newId); },
            [this](const CPath& path) { return m_store.AddCondition(path, ConditionNode()); },
            [this](const CPath& path) { return m_store.ResetCondition(path, ConditionNode()); },
            [this](const CPath& path) { return m_store.DelCondition(path, m_rules); },
            [this](const CPath& path) { return m_store.AddQd({}, path, m_rules); },
            [this](const CPath& path) { return m_store.AddDe2QdNode({}, path, m_rules); },
            [this](const CPath& path) { return m_store.AddDe2ConfigNode({}, path, m_rules); },
            [this](const CPath& path) { return m_store.DelQd(path, {6}); },
            [this](const CPath& path) { return m_store.DelDeInConfigNode(path, {7}); },
            [this](const CPath& path) { return m_store.ResetQd(path, {}); },
            [this](const CPath& path) { return m_store.ResetDeToConfig(path, {}); },
            [this](const CPath& path) { return m_store.ResetDeToQd(path, {}); },
            [this](const CPath& path) { return m_store.DelConfig(path); },
        };
    }

    /// That no operation resolves `path`, that none changes the tree, and that outputs stay as they were.
    void ExpectNothing(const CPath& path)
    {
        EXPECT_TRUE(m_store.Save());
        const QByteArray before = Bytes(u"r.xml"_s);
        m_rules = {nullptr};
        m_indexes = {u"kept"_s};
        m_newId = 77;
        for (const auto& operation : Operations())
            EXPECT_FALSE(operation(path));
        EXPECT_EQ(m_rules, std::vector<ConfigNode*>{nullptr});
        EXPECT_EQ(m_indexes, std::vector<CString>{u"kept"_s});
        EXPECT_EQ(m_newId, 77);
        EXPECT_TRUE(m_store.Save());
        EXPECT_EQ(Bytes(u"r.xml"_s), before);
    }

    CXmlQdDeConfig m_store;
    std::vector<ConfigNode*> m_rules;
    std::vector<CString> m_indexes;
    int m_newId = 0;
};

} // namespace

TEST_F(StorePaths, AnotherSpecialtyResolvesToNothing)
{
    CPath path = Path();
    path.specId = 2;
    ExpectNothing(path);
}

TEST_F(StorePaths, UnknownBigCategoryResolvesToNothing)
{
    CPath path = Path();
    path.lMemberId = 99;
    ExpectNothing(path);
}

TEST_F(StorePaths, UnknownSmallCategoryResolvesToNothing)
{
    CPath path = Path();
    path.sMemberId = 121; // of another big category
    ExpectNothing(path);
}

TEST_F(StorePaths, UnknownRuleIsFalseForAllThatNeedOne)
{
    CPath path = Path();
    path.configId = 99;
    EXPECT_EQ(m_store.GetConfig(path), nullptr);
    EXPECT_FALSE(m_store.GetExistQdIndex(path, m_indexes));
    EXPECT_FALSE(m_store.AddConfigByCopy(path, m_newId));
    EXPECT_FALSE(m_store.AddCondition(path, ConditionNode()));
    EXPECT_FALSE(m_store.DelCondition(path, m_rules));
    EXPECT_FALSE(m_store.AddQd({}, path, m_rules));
    EXPECT_FALSE(m_store.AddDe2QdNode({}, path, m_rules));
    EXPECT_FALSE(m_store.DelQd(path, {6}));
    EXPECT_FALSE(m_store.MoveUpConfig(path));
    EXPECT_TRUE(m_rules.empty());
}

TEST_F(StorePaths, DeletingAnUnknownRuleOfAKnownCategoryIsTrue)
{
    CPath path = Path();
    path.configId = 99;
    EXPECT_TRUE(m_store.DelConfig(path));
    EXPECT_EQ(RuleIds(), (std::vector<int>{2, 3, 1}));
}

TEST_F(StorePaths, RulesAreHandedOutInOrderReplacingWhatTheListHeld)
{
    m_rules = {nullptr, nullptr, nullptr, nullptr};
    EXPECT_TRUE(m_store.GetConfig(Path(), m_rules));
    EXPECT_EQ(test::Ids(m_rules), (std::vector<int>{2, 3, 1}));
}

TEST_F(StorePaths, BillNumbersAreAppended)
{
    m_indexes = {u"kept"_s};
    EXPECT_TRUE(m_store.GetExistQdIndex(Path(), m_indexes));
    EXPECT_EQ(m_indexes, (std::vector<CString>{u"kept"_s, u"03"_s}));
}

TEST_F(StorePaths, RulesAreAddedCopiedMovedAndDeleted)
{
    EXPECT_TRUE(m_store.AddConfig(Path(), m_newId));
    EXPECT_EQ(m_newId, 4);
    EXPECT_TRUE(m_store.AddConfigByCopy(Path(), m_newId));
    EXPECT_EQ(m_newId, 5);
    EXPECT_EQ(RuleIds(), (std::vector<int>{2, 3, 4, 5, 1}));
    EXPECT_TRUE(m_store.MoveDownConfig(Path()));
    EXPECT_EQ(RuleIds(), (std::vector<int>{3, 2, 4, 5, 1}));
    EXPECT_TRUE(m_store.MoveUpConfig(Path()));
    EXPECT_TRUE(m_store.DelConfig(Path()));
    EXPECT_EQ(RuleIds(), (std::vector<int>{3, 4, 5, 1}));
}

TEST_F(StorePaths, CopiedRuleLeadsToItsCategory)
{
    EXPECT_TRUE(m_store.AddConfigByCopy(Path(), m_newId));
    CPath path = Path();
    path.configId = m_newId;
    EXPECT_TRUE(m_store.AddDe2QdNode(De(u"C8"_s), path, m_rules));
    EXPECT_EQ(test::Ids(m_rules), (std::vector<int>{2, 3, 4, 1}));
    EXPECT_EQ(m_store.GetConfig(path)->GetQd(6)->GetDe().size(), 3U);
    EXPECT_EQ(Rule().GetQd(6)->GetDe().size(), 2U);
}

TEST_F(StorePaths, MovingTheOnlyRuleDownRaisesTheIndexError)
{
    CPath path = Path();
    path.sMemberId = 112;
    path.configId = 1;
    EXPECT_FALSE(m_store.MoveUpConfig(path));
    EXPECT_THROW(m_store.MoveDownConfig(path), std::out_of_range);
}

TEST_F(StorePaths, ConditionsAreAddedResetAndDeleted)
{
    EXPECT_TRUE(m_store.AddCondition(Path(), test::Condition(u"x"_s)));
    EXPECT_EQ(Rule().GetConditionString(), u"A;A＝x;"_s);
    EXPECT_TRUE(m_store.ResetCondition(Path(), test::Condition(u"y"_s)));
    EXPECT_EQ(Rule().GetConditionString(), u"A＝y;A＝x;"_s);
    EXPECT_TRUE(m_store.DelCondition(Path(), m_rules));
    EXPECT_EQ(Rule().GetConditionString(), u"A＝x;"_s);
    EXPECT_EQ(test::Ids(m_rules), (std::vector<int>{2, 3, 1}));
}

TEST_F(StorePaths, DeletingAConditionThatTheRuleLacksIsTrueAndFillsTheRules)
{
    CPath path = Path();
    path.conditionId = 99;
    EXPECT_TRUE(m_store.DelCondition(path, m_rules));
    EXPECT_EQ(test::Ids(m_rules), (std::vector<int>{2, 3, 1}));
    EXPECT_EQ(Rule().GetCondition().size(), 1U);
    EXPECT_FALSE(m_store.ResetCondition(path, ConditionNode()));
}

TEST_F(StorePaths, BillItemsAreAddedResetAndDeleted)
{
    EXPECT_TRUE(m_store.AddQd(Qd(u"04"_s), Path(), m_rules));
    EXPECT_EQ(test::Ids(m_rules), (std::vector<int>{2, 3, 1}));
    EXPECT_EQ(Rule().GetQd(7)->GetRecord().strQdId, u"04"_s);
    EXPECT_TRUE(m_store.ResetQd(Path(), Qd(u"05"_s)));
    EXPECT_EQ(Rule().GetQd(6)->GetRecord().strQdId, u"05"_s);
    EXPECT_EQ(Rule().GetQd(6)->GetDe().size(), 2U);
    EXPECT_TRUE(m_store.DelQd(Path(), {6, 99}));
    ASSERT_EQ(Rule().GetQd().size(), 1U);
    EXPECT_EQ(Rule().GetQd().front()->GetId(), 7);
}

TEST_F(StorePaths, QuotaItemsOfABillItemAreAddedAndReset)
{
    EXPECT_TRUE(m_store.AddDe2QdNode(De(u"C8"_s), Path(), m_rules));
    EXPECT_EQ(test::Ids(m_rules), (std::vector<int>{2, 3, 1}));
    EXPECT_EQ(Rule().GetQd(6)->GetDe(9)->GetRecord().strDeId, u"C8"_s);
    EXPECT_TRUE(m_store.ResetDeToQd(Path(7), De(u"C9"_s)));
    EXPECT_EQ(Rule().GetQd(6)->GetDe(7)->GetRecord().strDeId, u"C9"_s);
    EXPECT_EQ(Rule().GetDe(7)->GetRecord().strDeId, CString());
    EXPECT_FALSE(m_store.ResetDeToQd(Path(99), De(u"C9"_s)));
}

TEST_F(StorePaths, QuotaItemsOfARuleAreAddedResetAndDeleted)
{
    EXPECT_TRUE(m_store.AddDe2ConfigNode(De(u"C8"_s), Path(), m_rules));
    EXPECT_EQ(test::Ids(m_rules), (std::vector<int>{2, 3, 1}));
    EXPECT_EQ(Rule().GetDe(10)->GetRecord().strDeId, u"C8"_s);
    EXPECT_TRUE(m_store.ResetDeToConfig(Path(7), De(u"C9"_s)));
    EXPECT_EQ(Rule().GetDe(7)->GetRecord().strDeId, u"C9"_s);
    EXPECT_EQ(Rule().GetQd(6)->GetDe(7)->GetRecord().strDeId, CString());
    EXPECT_FALSE(m_store.ResetDeToConfig(Path(99), De(u"C9"_s)));
    EXPECT_TRUE(m_store.DelDeInConfigNode(Path(), {7, 9}));
    EXPECT_EQ(Rule().GetDe().size(), 1U);
}

TEST_F(StorePaths, UnknownBillItemIsFalse)
{
    CPath path = Path();
    path.qdId = 99;
    EXPECT_FALSE(m_store.AddDe2QdNode({}, path, m_rules));
    EXPECT_FALSE(m_store.ResetDeToQd(path, {}));
    EXPECT_FALSE(m_store.ResetQd(path, {}));
    EXPECT_TRUE(m_rules.empty());
}

TEST_F(StorePaths, DeletingQuotaItemsGoesByBillItemAndSkipsUnknownOnes)
{
    EXPECT_TRUE(m_store.AddQd(Qd(u"04"_s), Path(), m_rules));
    CPath path = Path();
    path.qdId = 7;
    EXPECT_TRUE(m_store.AddDe2QdNode(De(u"C8"_s), path, m_rules));
    path.qdId = 99; // the path's own bill item is of no account
    EXPECT_TRUE(m_store.DelDeInQdNode(path, {{6, {7, 55}}, {7, {1}}, {42, {1}}}));
    ASSERT_EQ(Rule().GetQd(6)->GetDe().size(), 1U);
    EXPECT_NE(Rule().GetQd(6)->GetDe(8), nullptr);
    EXPECT_TRUE(Rule().GetQd(7)->GetDe().empty());
    EXPECT_EQ(Rule().GetDe().size(), 2U);
}

TEST_F(StorePaths, DeletingQuotaItemsIsTrueForAnEmptyMapAndForAPathToNowhere)
{
    EXPECT_TRUE(m_store.DelDeInQdNode(Path(), {}));
    CPath path = Path();
    path.specId = 2;
    EXPECT_TRUE(m_store.DelDeInQdNode(path, {{6, {7}}}));
    EXPECT_EQ(Rule().GetQd(6)->GetDe().size(), 2U);
}

TEST_F(StorePaths, EditsReachTheDiskWithTheNextSaveOnly)
{
    const QByteArray before = Bytes(u"r.xml"_s);
    for (const auto& operation : Operations())
        operation(Path());
    m_store.DelDeInQdNode(Path(), {{6, {7}}});
    EXPECT_EQ(Bytes(u"r.xml"_s), before);
    EXPECT_TRUE(m_store.Save());
    EXPECT_NE(Bytes(u"r.xml"_s), before);
}

TEST_F(StorePaths, OfRepeatedRuleIdsTheFirstIsFound)
{
    CXmlQdDeConfig store(
        Put(u"twice.xml"_s, test::RuleFile(test::PlumbingRules(
                                u"<c id='2' LastDeId='7'/><c id='2'/><c id='1' bDefault='1'/>"_s))),
        u"给排水"_s);
    EXPECT_EQ(store.GetConfig(RulePath(2))->GetLastDeId(), 7);
}
