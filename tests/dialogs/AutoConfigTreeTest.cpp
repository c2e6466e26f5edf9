#include "dialogs/AutoConfigFixture.h"

#include <QtGui/QMouseEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>

using namespace test::autoconfig;

// The tree of categories: what it holds, what a selection shows, and how selections become paths.

using AutoConfigTree = AutoConfigTest;

TEST_F(AutoConfigTree, HoldsTheCurrentSpecialtyOnlyInTheHostsOrder)
{
    Open();
    ASSERT_EQ(Tree().topLevelItemCount(), 1);
    const QTreeWidgetItem* root = Tree().topLevelItem(0);
    EXPECT_EQ(root->text(0), u"给排水"_s);
    ASSERT_EQ(root->childCount(), 2);
    EXPECT_EQ(root->child(0)->text(0), u"管道"_s);
    EXPECT_EQ(root->child(1)->text(0), u"阀门"_s);
    ASSERT_EQ(root->child(0)->childCount(), 2);
    EXPECT_EQ(root->child(0)->child(0)->text(0), u"给水管"_s);
    EXPECT_EQ(root->child(0)->child(1)->text(0), u"排水管"_s);
    EXPECT_TRUE(root->isExpanded());
    EXPECT_TRUE(root->child(0)->isExpanded());
    EXPECT_TRUE(root->child(1)->isExpanded());
}

TEST_F(AutoConfigTree, FirstSmallCategoryIsSelectedAtTheStartWithItsRulesAttributesAndGrid)
{
    const int id = PrepareRule({u"DN15"_s});
    PrepareBill(id, u"031001001001"_s, {u"8-87"_s});
    Open();
    EXPECT_EQ(SelectedCategory(), u"给水管"_s);
    EXPECT_EQ(RuleTexts(), (CStringArray{u"管径＝DN15;"_s, u"其它"_s}));
    EXPECT_EQ(RuleNumbers(), (CStringArray{u"1"_s, u"2"_s}));
    EXPECT_EQ(SelectedRuleRow(), 0);
    EXPECT_EQ(AttributeNames(), (CStringArray{u"材质"_s, u"管径"_s, u"长度"_s, u"具体构件"_s}));
    EXPECT_EQ(ConditionTexts(), CStringArray{u"管径＝DN15"_s});
    EXPECT_EQ(GridColumn(), (CStringArray{u"031001001001"_s, u"8-87"_s}));
}

TEST_F(AutoConfigTree, SmallCategoriesWithOneOfThreeNamesAnywhereGetNoItem)
{
    Host().AddSmall(u"11"_s, u"113"_s, u"室内导线·导管敷设"_s);
    Host().AddSmall(u"11"_s, u"114"_s, u"配管配线"_s);
    Host().AddSmall(u"11"_s, u"115"_s, u"明组合管线"_s);
    Host().AddSmall(u"11"_s, u"116"_s, u"导线"_s);
    Open();
    const QTreeWidgetItem* big = Category(u"管道"_s);
    ASSERT_EQ(big->childCount(), 3);
    EXPECT_EQ(big->child(2)->text(0), u"导线"_s);
}

TEST_F(AutoConfigTree, NothingIsSelectedWhenTheFirstBigCategoryHasNoChild)
{
    Host().RemoveSmall(u"111"_s);
    Host().RemoveSmall(u"112"_s);
    Open();
    EXPECT_TRUE(Tree().selectedItems().isEmpty());
    EXPECT_EQ(RuleTexts(), CStringArray());
    EXPECT_EQ(Messages().Texts(), CStringArray());
    SelectCategory(u"截止阀"_s);
    EXPECT_EQ(RuleTexts(), CStringArray{u"其它"_s});
}

TEST_F(AutoConfigTree, BigCategoryWithoutChildrenIsALeafWhoseRulesAreNotFound)
{
    Host().RenameSmall(u"121"_s, u"配管配线"_s);
    PrepareRule({u"DN15"_s});
    Open();
    SelectCategory(u"阀门"_s);
    ASSERT_EQ(Messages().Messages().size(), 1U);
    EXPECT_EQ(Messages().Messages().front().text, u"GetConfig return false"_s);
    EXPECT_EQ(Messages().Messages().front().kind, platform::MessageKind::Plain);
    // Rule list and attribute list keep what they show; the grid was reset before.
    EXPECT_EQ(RuleTexts(), (CStringArray{u"管径＝DN15;"_s, u"其它"_s}));
    EXPECT_EQ(AttributeNames().first(), u"材质"_s);
    EXPECT_EQ(Grid().GetColumnCount(), 5);
}

TEST_F(AutoConfigTree, BigCategoryWithoutChildrenIsAddressedOneLevelOff)
{
    Host().AddSpec(u"0"_s, u"专业"_s);
    Host().AddBig(u"0"_s, u"0"_s, u"甲"_s);
    Host().AddSmall(u"0"_s, u"5"_s, u"小类"_s);
    Host().AddBig(u"0"_s, u"5"_s, u"乙"_s);
    Host().SetCurrentSpec(u"专业"_s);
    Open();
    Press(AddRuleButton);
    SelectCategory(u"乙"_s); // its id in the place of a small category's, the specialty's in the big one's
    EXPECT_EQ(Messages().Texts(), CStringArray());
    EXPECT_EQ(RuleTexts().size(), 2);
}

TEST_F(AutoConfigTree, BigCategoryAndRootRebuildNothing)
{
    PrepareBill(PrepareRule({u"DN15"_s}), u"031001001001"_s);
    Open();
    for (const CString& name : {u"管道"_s, u"给排水"_s}) {
        SelectCategory(name);
        EXPECT_EQ(SelectedCategory(), name);
        EXPECT_EQ(RuleTexts(), (CStringArray{u"管径＝DN15;"_s, u"其它"_s}));
        EXPECT_EQ(ConditionTexts(), CStringArray{u"管径＝DN15"_s});
        EXPECT_EQ(GridColumn(), CStringArray{u"031001001001"_s});
    }
    EXPECT_EQ(Messages().Texts(), CStringArray());
}

TEST_F(AutoConfigTree, GridHasSixColumnsWhereTheAttributeTypeIsNotZero)
{
    Open();
    EXPECT_EQ(Grid().GetColumnCount(), 6);
    SelectCategory(u"排水管"_s);
    EXPECT_EQ(Grid().GetColumnCount(), 5);
    SelectCategory(u"给水管"_s);
    EXPECT_EQ(Grid().GetColumnCount(), 6);
}

TEST_F(AutoConfigTree, OpenEditOfTheNameIsKeptByAChangeOfTheCategory)
{
    const int id = PrepareRule({});
    PrepareBill(id, u"031001001001"_s);
    Open();
    EditCell(1, 2, u"新名"_s);
    SelectCategory(u"排水管"_s);
    EXPECT_EQ(Rule(id).GetQd(1)->GetRecord().strName, u"新名"_s);
    SelectCategory(u"给水管"_s);
    EXPECT_EQ(GridColumn(2), CStringArray{u"新名"_s});
}

TEST_F(AutoConfigTree, EditWithABigCategorySelectedIsDroppedByTheNextSelection)
{
    const int id = PrepareRule({});
    PrepareBill(id, u"031001001001"_s);
    Open();
    SelectCategory(u"管道"_s);
    EditCell(1, 2, u"新名"_s);
    SelectCategory(u"给水管"_s);
    EXPECT_EQ(Rule(id).GetQd(1)->GetRecord().strName, u"清单031001001001"_s);
    EXPECT_EQ(GridColumn(2), CStringArray{u"清单031001001001"_s});
}

TEST_F(AutoConfigTree, CommandsWithABigCategorySelectedDoNothing)
{
    PrepareBill(PrepareRule({u"DN15"_s}), u"031001001001"_s);
    Open();
    const CStringArray before = Stored();
    SelectCategory(u"管道"_s);
    for (const ControlId button : {AddRuleButton, CopyRuleButton, DeleteRuleButton, MoveUpButton,
                                   MoveDownButton, RemoveConditionButton, DeleteItemsButton})
        Press(button);
    TypeInto(ValueCombo, u"PPR"_s);
    Press(AddConditionButton);
    PickQuota(u"8-87"_s);
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(RuleTexts(), (CStringArray{u"管径＝DN15;"_s, u"其它"_s}));
    EXPECT_EQ(GridColumn(), CStringArray{u"031001001001"_s});
    EXPECT_EQ(Messages().Texts(), CStringArray());
}

TEST_F(AutoConfigTree, SelectionOutlivesAClickWithControl)
{
    Open();
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, Qt::ControlModifier,
                      Tree().visualItemRect(Category(u"给水管"_s)).center());
    EXPECT_EQ(SelectedCategory(), u"给水管"_s);
}

TEST_F(AutoConfigTree, VisibleBillPickerFollowsTheSelection)
{
    Host().SetIndexPath(u"给排水\\管道\\排水管\\"_s, u"10\\1\\2"_s);
    Open();
    SelectCategory(u"排水管"_s);
    EXPECT_EQ(m_windows.Bill().Calls(), CStringArray{u"create"_s});
    Press(PickerButton);
    m_windows.Bill().ForgetCalls();
    SelectCategory(u"给水管"_s);
    EXPECT_EQ(m_windows.Bill().Calls(), CStringArray{u"position 10.1.1"_s});
    SelectCategory(u"管道"_s);
    EXPECT_EQ(m_windows.Bill().Calls(), CStringArray{u"position 10.1.1"_s});
}

TEST_F(AutoConfigTree, VisibleQuotaPickerIsNotMovedBySelections)
{
    SetMode(SQdDeInfo::QuotaMode);
    Open();
    Press(PickerButton);
    m_windows.Quota().ForgetCalls();
    SelectCategory(u"排水管"_s);
    EXPECT_EQ(m_windows.Quota().Calls(), CStringArray());
    EXPECT_EQ(m_windows.Bill().Calls(), CStringArray{u"create"_s});
}

TEST_F(AutoConfigTree, PressOnAnEmptyPlaceTakesNoEditOverAndLeavesTheFocus)
{
    const int id = PrepareRule({});
    PrepareBill(id, u"031001001001"_s);
    Open();
    EditCell(1, 2, u"新名"_s);
    Key(Qt::Key_Return);
    Tree().setFocus();
    const QPoint empty = Tree().viewport()->rect().bottomLeft() + QPoint(20, -5);
    ASSERT_EQ(Tree().itemAt(empty), nullptr);
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {}, empty);
    EXPECT_EQ(Rule(id).GetQd(1)->GetRecord().strName, u"清单031001001001"_s);
    EXPECT_EQ(m_dialog->focusWidget(), &Tree());
    EXPECT_EQ(SelectedCategory(), u"给水管"_s);
    EXPECT_EQ(GridColumn(2), CStringArray{u"新名"_s});
}

TEST_F(AutoConfigTree, PressOnTheSelectedItemTakesNoEditOver)
{
    const int id = PrepareRule({});
    PrepareBill(id, u"031001001001"_s);
    Open();
    EditCell(1, 2, u"新名"_s);
    Key(Qt::Key_Return);
    SelectCategory(u"给水管"_s);
    Tree().setCurrentItem(Category(u"给水管"_s));
    EXPECT_EQ(Rule(id).GetQd(1)->GetRecord().strName, u"清单031001001001"_s);
}

TEST_F(AutoConfigTree, DraggingOverItemsLeavesSelectionAndKeyboardAtTheOneThatWasPressed)
{
    Open();
    QWidget* items = Tree().viewport();
    const QPoint start = Tree().visualItemRect(Category(u"排水管"_s)).center();
    const QPoint end = Tree().visualItemRect(Category(u"截止阀"_s)).center();
    QTest::mousePress(items, Qt::LeftButton, {}, start);
    QMouseEvent move(QEvent::MouseMove, end, items->mapToGlobal(end), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(items, &move);
    QTest::mouseRelease(items, Qt::LeftButton, {}, end);
    EXPECT_EQ(SelectedCategory(), u"排水管"_s);
    EXPECT_EQ(Tree().currentItem(), Category(u"排水管"_s));
}
