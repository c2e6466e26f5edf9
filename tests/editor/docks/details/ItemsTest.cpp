#include "editor/docks/details/DetailItems.h"

#include <QtGui/QAction>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;
using editor::ItemTree;
using test::DetailItems;
using ::testing::HasSubstr;

TEST_F(DetailItems, ShowsBillItemsWithTheirQuotaItemsBelow)
{
    HaveItems();
    ASSERT_EQ(Tree().topLevelItemCount(), 2);
    EXPECT_EQ(Row(0).text(ItemTree::NumberColumn), u"031001001001"_s);
    EXPECT_EQ(Row(0).text(ItemTree::NameColumn), u"清单031001001001"_s);
    EXPECT_EQ(Row(0).text(ItemTree::FormulaColumn), u"管道长度"_s);
    ASSERT_EQ(Row(0).childCount(), 2);
    EXPECT_EQ(Row(0, 1).text(ItemTree::NumberColumn), u"示10-1-2"_s);
    EXPECT_EQ(Row(0, 1).text(ItemTree::UnitColumn), u"10m"_s);
    EXPECT_EQ(Tree().headerItem()->text(ItemTree::FormulaColumn), u"计算结果编辑"_s);
    EXPECT_FALSE(Tree().isColumnHidden(ItemTree::AnnexColumn));
}

TEST_F(DetailItems, RuleWithoutItemsLeavesNoneOfTheRuleBefore)
{
    HaveRules({test::RuleOf({}, {test::Bill(u"031001001001"_s)}), test::RuleOf({})});
    GoTo(Row(0), ItemTree::NumberColumn);
    Choose({1});
    EXPECT_EQ(Tree().topLevelItemCount(), 0);
    EXPECT_FALSE(Command(u"换成…"_s).isEnabled());
    EXPECT_TRUE(m_messages.Texts().isEmpty());
}

TEST_F(DetailItems, AnnexColumnIsThereForTheCategoriesThatHaveIt)
{
    HaveItems();
    m_session.ChooseCategory(u"给排水\\阀门附件\\阀门"_s);
    EXPECT_EQ(m_session.CategoryText(), u"给排水\\阀门附件\\阀门"_s);
    EXPECT_TRUE(Tree().isColumnHidden(ItemTree::AnnexColumn));
}

TEST_F(DetailItems, AllCommandsAreSeenInANarrowDock)
{
    HaveItems();
    m_panel->resize(300, 600);
    QCoreApplication::processEvents();
    ASSERT_EQ(m_panel->width(), 300);
    for (const CString& text : {u"加条件"_s, u"系列…"_s, u"套清单…"_s, u"换成…"_s, u"下移"_s}) {
        const auto buttons = m_panel->findChildren<QToolButton*>();
        const auto found = std::find_if(buttons.begin(), buttons.end(),
                                        [&](const QToolButton* button) { return button->text() == text; });
        ASSERT_NE(found, buttons.end()) << text.toStdString();
        const QToolButton& button = **found;
        EXPECT_TRUE(m_panel->rect().contains(QRect(button.mapTo(m_panel.get(), QPoint(0, 0)), button.size())))
            << text.toStdString();
        EXPECT_GE(button.width(), button.sizeHint().width());
    }
}

TEST_F(DetailItems, NameThatIsBeingTypedIsTakenBeforeTheCalculatorOpens)
{
    HaveItems();
    m_windows.SetCalculation(u"管道长度*1.05"_s);
    GoTo(Row(0), ItemTree::NameColumn);
    Press(Qt::Key_F2);
    Type(u"新名称"_s);
    Command(u"计算…"_s).trigger();
    EXPECT_EQ(Rule().bills[0].record.strName, u"新名称"_s);
    EXPECT_EQ(Rule().bills[0].record.strFormula, u"管道长度*1.05"_s);
}

TEST_F(DetailItems, FormulaCellOpensTheCalculator)
{
    HaveItems();
    m_windows.SetCalculation(u"管道长度*1.05"_s);
    GoTo(Row(0, 1), ItemTree::FormulaColumn);
    Press(Qt::Key_Return);
    EXPECT_EQ(m_windows.Calculations(), CStringArray{Category + u"|管道长度"_s});
    EXPECT_EQ(Rule().bills[0].quotas[1].record.strFormula, u"管道长度*1.05"_s);
    EXPECT_EQ(Rule().bills[0].quotas[0].record.strFormula, u"管道长度"_s);
    EXPECT_EQ(m_session.Undo().count(), 1);
    m_windows.SetCalculation(std::nullopt);
    Press(Qt::Key_F4);
    EXPECT_EQ(m_session.Undo().count(), 1);
}

TEST_F(DetailItems, DoubleClickOnTheFormulaOpensTheCalculatorOnce)
{
    HaveItems();
    m_windows.SetCalculation(u"L"_s);
    const QRect place = Tree().visualItemRect(&Row(0));
    const QPoint point(Tree().columnViewportPosition(ItemTree::FormulaColumn) + 5, place.center().y());
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {}, point);
    QTest::mouseDClick(Tree().viewport(), Qt::LeftButton, {}, point);
    EXPECT_EQ(m_windows.Calculations().size(), 1);
    EXPECT_EQ(Rule().bills[0].record.strFormula, u"L"_s);
}

TEST_F(DetailItems, NameUnitAndAnnexAreEditedInPlace)
{
    HaveItems();
    GoTo(Row(0), ItemTree::NameColumn);
    Press(Qt::Key_F2);
    Type(u"新名"_s);
    Press(Qt::Key_Return);
    EXPECT_EQ(Rule().bills[0].record.strName, u"新名"_s);
    EXPECT_EQ(Rule().bills[0].record.strQdIdUser, u"自编"_s) << "what is not edited stays";
    GoTo(Row(0), ItemTree::UnitColumn);
    Press(Qt::Key_F2);
    Type(u"100m"_s);
    Press(Qt::Key_Return);
    EXPECT_EQ(Rule().bills[0].record.strUnit, u"100m"_s);
    EXPECT_EQ(Rule().bills[0].record.strUnitCode, u"100"_s);
    GoTo(Row(0), ItemTree::AnnexColumn);
    Press(Qt::Key_F2);
    auto* combo = qobject_cast<QComboBox*>(QApplication::focusWidget());
    ASSERT_NE(combo, nullptr);
    combo->setCurrentText(u"否"_s);
    Press(Qt::Key_Return);
    EXPECT_EQ(Rule().bills[0].record.strAnnex, u"否"_s);
    EXPECT_EQ(m_session.Undo().count(), 3);
}

TEST_F(DetailItems, NumberIsNotEdited)
{
    HaveItems();
    GoTo(Row(0), ItemTree::NumberColumn);
    Press(Qt::Key_F2);
    EXPECT_EQ(QApplication::focusWidget(), &Tree());
}

TEST_F(DetailItems, OpenNameGoesIntoItsRuleWhenTheChoiceMoves)
{
    HaveItems();
    GoTo(Row(0), ItemTree::NameColumn);
    Press(Qt::Key_F2);
    Type(u"新名"_s);
    Choose({1});
    EXPECT_EQ(Rule(0).bills[0].record.strName, u"新名"_s);
    EXPECT_EQ(Rule(1).bills[0].record.strName, u"清单031001001001"_s);
}

TEST_F(DetailItems, ArrowsGoFromCellToCell)
{
    HaveItems();
    GoTo(Row(0), ItemTree::NumberColumn);
    Press(Qt::Key_Right);
    EXPECT_EQ(Tree().currentColumn(), ItemTree::NameColumn);
    EXPECT_EQ(Tree().currentItem(), &Row(0));
    Press(Qt::Key_Down);
    EXPECT_EQ(Tree().currentItem(), &Row(0, 0));
    Press(Qt::Key_Left);
    EXPECT_EQ(Tree().currentItem(), &Row(0, 0));
    EXPECT_EQ(Tree().currentColumn(), ItemTree::NumberColumn);
}

TEST_F(DetailItems, DeleteRemovesSelectedItemsInOneStep)
{
    HaveItems();
    GoTo(Row(0, 1), ItemTree::NumberColumn);
    Row(1).setSelected(true);
    Press(Qt::Key_Delete);
    EXPECT_EQ(Items(), u"031001001001 -示10-1-1"_s);
    EXPECT_EQ(m_session.Undo().count(), 1);
    Undo();
    EXPECT_EQ(Items(), u"031001001001 -示10-1-1 -示10-1-2 031001002001"_s);
}

TEST_F(DetailItems, BillItemSelectedWithItsQuotaItemsGoesWithAllOfThem)
{
    HaveItems();
    GoTo(Row(0), ItemTree::NumberColumn);
    Row(0, 0).setSelected(true);
    Press(Qt::Key_Delete);
    EXPECT_EQ(Items(), u"031001002001"_s);
}

TEST_F(DetailItems, ControlAndArrowsMoveItemsAmongTheirEquals)
{
    HaveItems();
    GoTo(Row(0), ItemTree::NumberColumn);
    EXPECT_FALSE(Command(u"上移"_s).isEnabled());
    Press(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(Items(), u"031001002001 031001001001 -示10-1-1 -示10-1-2"_s);
    EXPECT_EQ(Tree().Current()->number, u"031001001001"_s);
    GoTo(Row(1, 1), ItemTree::NumberColumn);
    Press(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(Items(), u"031001002001 031001001001 -示10-1-2 -示10-1-1"_s);
    EXPECT_EQ(Tree().Current()->number, u"示10-1-2"_s);
    EXPECT_EQ(m_session.Undo().count(), 2);
}

TEST_F(DetailItems, ItemsOfOtherLibrariesAreShownWithAWordAndCanBeDeleted)
{
    rules::BillItem foreign = test::Bill(u"030801001001"_s, u"GB50500-2008"_s);
    foreign.quotas = {test::Quota(u"示10-1-1"_s)};
    rules::BillItem own = test::Bill(u"031001001001"_s, u"gb50856-2013"_s);
    own.quotas = {test::Quota(u"补1"_s, u"DEMO-QDDE-2025"_s)};
    HaveRules({test::RuleOf({}, {foreign, own})});
    Show();
    EXPECT_EQ(Row(0).text(ItemTree::NumberColumn), u"030801001001（其他库）"_s);
    EXPECT_EQ(Row(0, 0).text(ItemTree::NumberColumn), u"示10-1-1（其他库）"_s)
        << "the module leaves it out with its bill item";
    EXPECT_EQ(Row(1).text(ItemTree::NumberColumn), u"031001001001"_s) << "codes are alike in any case";
    EXPECT_EQ(Row(1, 0).text(ItemTree::NumberColumn), u"补1（其他库）"_s);
    EXPECT_NE(Row(0).foreground(0).color(), Row(1).foreground(0).color());
    GoTo(Row(0), ItemTree::NameColumn);
    EXPECT_FALSE(Command(u"计算…"_s).isEnabled());
    Press(Qt::Key_F2);
    EXPECT_EQ(QApplication::focusWidget(), &Tree()) << "not edited";
    Press(Qt::Key_Delete);
    EXPECT_EQ(Items(), u"031001001001 -补1"_s);
}
