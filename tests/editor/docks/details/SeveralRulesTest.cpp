#include "dialogs/ModalUser.h"
#include "editor/docks/details/DetailsFixture.h"

#include <QtGui/QAction>
#include <QtWidgets/QAbstractButton>

using namespace Qt::StringLiterals;
using editor::ConditionTable;
using editor::ItemTree;
using ::testing::HasSubstr;

namespace {

/// Three rules: the first two of a material, all with the same bill item, the third with other diameters.
class DetailSeveral : public test::DetailsFixture
{
protected:
    DetailSeveral()
    {
        rules::BillItem bill = test::Bill(u"031001001001"_s);
        bill.quotas = {test::Quota(u"示10-1-1"_s)};
        rules::BillItem other = bill;
        other.record.strFormula = u"L"_s;
        const rules::Condition material = test::Equals(u"材质"_s, u"镀锌钢管"_s);
        HaveRules({test::RuleOf({material, test::Between(u"公称直径"_s, u"50"_s, u"65"_s)}, {bill}),
                   test::RuleOf({material}, {bill}),
                   test::RuleOf({material, test::Between(u"公称直径"_s, u"65"_s, u"80"_s)},
                                {other, test::Bill(u"031001002001"_s)})});
        Show();
        Choose({0, 1, 2});
    }
    CString Cell(int row, int column) const { return Conditions().item(row, column)->text(); }
};

} // namespace

TEST_F(DetailSeveral, ShowsWhatTheRulesShare)
{
    EXPECT_THAT(Labels().toStdString(), HasSubstr("选中 3 条规则"));
    ASSERT_EQ(Conditions().rowCount(), 2);
    EXPECT_EQ(Cell(0, ConditionTable::ValueColumn), u"镀锌钢管"_s);
    EXPECT_EQ(Cell(1, ConditionTable::AttributeColumn), u"公称直径"_s);
    EXPECT_EQ(Cell(1, ConditionTable::ValueColumn), u"（2 条有，各不相同）"_s);
    ASSERT_EQ(Tree().topLevelItemCount(), 2);
    EXPECT_EQ(Tree().topLevelItem(0)->text(ItemTree::RulesColumn), u"3/3"_s);
    EXPECT_EQ(Tree().topLevelItem(0)->text(ItemTree::FormulaColumn), u"（各不相同）"_s);
    EXPECT_EQ(Tree().topLevelItem(0)->child(0)->text(ItemTree::RulesColumn), u"3/3"_s);
    EXPECT_EQ(Tree().topLevelItem(1)->text(ItemTree::RulesColumn), u"1/3"_s);
    EXPECT_FALSE(Tree().isColumnHidden(ItemTree::RulesColumn));
    EXPECT_FALSE(Command(u"套清单…"_s).isEnabled());
    EXPECT_FALSE(Command(u"删除"_s).isEnabled());
    Choose({0, 1});
    EXPECT_EQ(Cell(1, ConditionTable::ValueColumn), u"（1 条有 50＜..≤65）"_s);
}

TEST_F(DetailSeveral, ValueIsSetInAllOfThemInOneStep)
{
    Enter(0, ConditionTable::ValueColumn, u"铜管"_s);
    EXPECT_EQ(Text(0), u"材质＝铜管;50＜公称直径≤65;"_s);
    EXPECT_EQ(Text(1), u"材质＝铜管;"_s);
    EXPECT_EQ(Text(2), u"材质＝铜管;65＜公称直径≤80;"_s);
    EXPECT_EQ(m_session.Undo().count(), 1);
    EXPECT_THAT(Labels().toStdString(), HasSubstr("已改 3 条规则"));
    EXPECT_EQ(m_session.ChosenRules(), (std::vector<std::size_t>{0, 1, 2}));
    Undo();
    EXPECT_EQ(Text(1), u"材质＝镀锌钢管;"_s);
}

TEST_F(DetailSeveral, ConditionThatOnlySomeHaveIsSetEverywhereAndTheChoiceStays)
{
    Enter(1, ConditionTable::ValueColumn, u"50<..<=65"_s);
    EXPECT_EQ(Text(1), u"材质＝镀锌钢管;50＜公称直径≤65;"_s);
    EXPECT_EQ(Text(2), u"材质＝镀锌钢管;50＜公称直径≤65;"_s);
    EXPECT_THAT(Labels().toStdString(), HasSubstr("已改 2 条规则"));
    EXPECT_EQ(m_session.ChosenRules(), (std::vector<std::size_t>{0, 1, 2}));
}

TEST_F(DetailSeveral, NewConditionComesIntoAllOfThemButTheDefaultRule)
{
    Choose({1, 2, 3});
    GoTo(0, ConditionTable::ValueColumn);
    Press(Qt::Key_Insert);
    Type(u"连接方式"_s);
    Press(Qt::Key_Return);
    Enter(2, ConditionTable::ValueColumn, u"焊接"_s);
    EXPECT_EQ(Text(0), u"材质＝镀锌钢管;50＜公称直径≤65;"_s);
    EXPECT_EQ(Text(1), u"材质＝镀锌钢管;连接方式＝焊接;"_s);
    EXPECT_TRUE(Rule(3).conditions.empty());
    EXPECT_EQ(m_session.Undo().count(), 1);
}

TEST_F(DetailSeveral, DeletedConditionsGoFromAllInOneStep)
{
    GoTo(0, ConditionTable::ValueColumn);
    Conditions().selectAll();
    Press(Qt::Key_Delete);
    for (std::size_t rule = 0; rule < 3; ++rule)
        EXPECT_EQ(Text(rule), CString());
    EXPECT_EQ(m_session.Undo().count(), 1);
    EXPECT_THAT(Labels().toStdString(), HasSubstr("已改 3 条规则"));
    Undo();
    EXPECT_EQ(Text(2), u"材质＝镀锌钢管;65＜公称直径≤80;"_s);
}

TEST_F(DetailSeveral, ItemIsReplacedInAllOfThem)
{
    Tree().setFocus();
    Tree().setCurrentItem(Tree().topLevelItem(0)->child(0));
    Press(Qt::Key_Return, Qt::ControlModifier);
    const SPickedDe other{10, 0, u"示10-1-9"_s, u"室内镀锌钢管 100"_s, u"10m"_s, u"其它"_s};
    m_windows.Bill().PickQuota(&other);
    for (std::size_t rule = 0; rule < 3; ++rule) {
        EXPECT_EQ(Rule(rule).bills[0].quotas[0].record.strDeId, u"示10-1-9"_s);
        EXPECT_EQ(Rule(rule).bills[0].quotas[0].record.strFormula, u"管道长度"_s);
    }
    EXPECT_EQ(m_session.Undo().count(), 1);
    EXPECT_THAT(Labels().toStdString(), HasSubstr("已改 3 条规则"));
}

TEST_F(DetailSeveral, FormulaIsSetInAllOfThem)
{
    m_windows.SetCalculation(u"管道长度*2"_s);
    Tree().setFocus();
    Tree().setCurrentItem(Tree().topLevelItem(0));
    Press(Qt::Key_F4);
    for (std::size_t rule = 0; rule < 3; ++rule)
        EXPECT_EQ(Rule(rule).bills[0].record.strFormula, u"管道长度*2"_s);
    EXPECT_EQ(m_session.Undo().count(), 1);
    EXPECT_THAT(Labels().toStdString(), HasSubstr("已改 3 条规则"));
}

TEST_F(DetailSeveral, RulesOfSeveralCategoriesAreChangedInOneStep)
{
    const CString other = u"给排水\\管道\\热水管"_s;
    m_session.Do(rules::InsertRules(m_session.Draft(), other, 0,
                                    {test::RuleOf({test::Equals(u"材质"_s, u"镀锌钢管"_s)})}, u"准备"_s));
    m_session.Undo().clear();
    m_session.ChoosePlaces({{Category, {0}}, {other, {0}}}, Category, 0);
    EXPECT_THAT(Labels().toStdString(), HasSubstr("分属 2 个小类"));
    Enter(0, ConditionTable::ValueColumn, u"铜管"_s);
    EXPECT_EQ(Text(0), u"材质＝铜管;50＜公称直径≤65;"_s);
    EXPECT_EQ(m_session.Draft().Find(other)->rules[0].Text(), u"材质＝铜管;"_s);
    EXPECT_EQ(m_session.Undo().count(), 1);
    EXPECT_EQ(m_session.ChosenPlaces().size(), 2U);
}
