#include "dialogs/ModalUser.h"
#include "editor/docks/details/DetailsFixture.h"
#include "host/UserMessage.h"

#include <QtGui/QAction>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;
using editor::ItemTree;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

const SPickedQd GalvanizedPipe{0, 1, 1, u"031001001"_s};
const SPickedDe Quota65{10, 1, u"示10-1-7"_s, u"室内镀锌钢管 65"_s, u"10m"_s, u"管道长度"_s};

/// Presses the button that begins with that text in a modal window.
test::ModalStep Pressing(const CString& text)
{
    return [text](QWidget& window) {
        for (QAbstractButton* button : window.findChildren<QAbstractButton*>())
            if (button->text().startsWith(text)) return button->click();
        FAIL() << "no button " << text.toStdString();
    };
}

class DetailItems : public test::DetailsFixture
{
protected:
    explicit DetailItems(SQdDeInfo::EQdDeMode mode = SQdDeInfo::BillMode) : DetailsFixture(mode) {}

    void HaveItems()
    {
        rules::BillItem first = test::Bill(u"031001001001"_s);
        first.quotas = {test::Quota(u"示10-1-1"_s), test::Quota(u"示10-1-2"_s)};
        HaveRules({test::RuleOf({}, {first, test::Bill(u"031001002001"_s)}), test::RuleOf({}, {first})});
        Show();
    }
    QTreeWidgetItem& Row(int bill, int quota = -1) const
    {
        QTreeWidgetItem* row = Tree().topLevelItem(bill);
        return quota < 0 ? *row : *row->child(quota);
    }
    void GoTo(QTreeWidgetItem& row, int column)
    {
        Tree().setFocus();
        Tree().setCurrentItem(&row, column, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
    /// Opens the picker by the command and picks.
    int PickBill(const SPickedQd& picked)
    {
        Command(u"套清单…"_s).trigger();
        test::InModalWindows({Pressing(u"确定"_s)});
        return m_windows.Bill().PickBill(&picked);
    }
};

class DetailQuotaMode : public DetailItems
{
protected:
    DetailQuotaMode() : DetailItems(SQdDeInfo::QuotaMode)
    {
        HaveRules({test::RuleOf(
            {}, {},
            {test::Quota(u"示10-1-1"_s, u"DEMO-DE-2024"_s), test::Quota(u"示10-1-2"_s, u"DEMO-DE-2024"_s)})});
        Show();
    }
};

} // namespace

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

TEST_F(DetailItems, PickerComesBesideTheWindowTurnedToTheCategory)
{
    HaveItems();
    Tree().setFocus();
    Press(Qt::Key_Insert);
    EXPECT_TRUE(m_windows.Bill().IsVisible());
    EXPECT_FALSE(m_windows.Bill().AsksNumber());
    EXPECT_EQ(m_windows.Bill().Calls(),
              (CStringArray{u"create"_s, u"show"_s, u"right"_s, u"load"_s, u"position 0310.031001"_s}));
    m_windows.Bill().ForgetCalls();
    Press(Qt::Key_Insert);
    EXPECT_TRUE(m_windows.Bill().Calls().isEmpty());
    m_session.ChooseCategory(u"给排水\\管道\\排水管"_s);
    EXPECT_EQ(m_windows.Bill().Calls().size(), 1) << "it follows the category";
}

TEST_F(DetailItems, PickedBillItemGoesThroughTheNumberDialogIntoTheRule)
{
    HaveItems();
    EXPECT_EQ(PickBill(GalvanizedPipe), 0);
    ASSERT_EQ(Rule().bills.size(), 3U);
    const QdStruct& record = Rule().bills.back().record;
    EXPECT_TRUE(record.strQdId.startsWith(u"031001001"_s));
    EXPECT_EQ(record.strQdId.size(), 12);
    EXPECT_EQ(record.strName, u"镀锌钢管"_s);
    EXPECT_EQ(record.strUnit, u"m"_s);
    EXPECT_EQ(record.strUnitCode, u"1"_s);
    EXPECT_EQ(record.strQdCode, u"GB50856-2013"_s);
    EXPECT_EQ(record.strFormula, u"管道长度"_s);
    EXPECT_EQ(record.strAnnex, u"是"_s);
    EXPECT_NE(Rule().bills.back().id, 0);
    EXPECT_EQ(m_session.Undo().undoText(), u"套清单 "_s + record.strQdId);
    EXPECT_EQ(Tree().Current()->place, (editor::ItemPlace{2, -1}));
    Undo();
    EXPECT_EQ(Items(), u"031001001001 -示10-1-1 -示10-1-2 031001002001"_s);
}

TEST_F(DetailItems, CancelledNumberDialogLeavesTheRule)
{
    HaveItems();
    Command(u"套清单…"_s).trigger();
    test::InModalWindows({Pressing(u"取消"_s)});
    m_windows.Bill().PickBill(&GalvanizedPipe);
    EXPECT_EQ(Rule().bills.size(), 2U);
    EXPECT_EQ(m_session.Undo().count(), 0);
}

TEST_F(DetailItems, NumberThatTheRuleHasIsNotTakenOnceMore)
{
    HaveItems();
    Command(u"套清单…"_s).trigger();
    test::InModalWindows({[](QWidget& window) {
                              Pressing(u"选用已有"_s)(window);
                              Pressing(u"确定"_s)(window);
                          },
                          Pressing(u"取消"_s)});
    m_windows.Bill().PickBill(&GalvanizedPipe);
    EXPECT_THAT(m_messages.Texts().join(u'|').toStdString(), HasSubstr("同一构件不能多次套同一清单"));
    EXPECT_EQ(m_session.Undo().count(), 0);
}

TEST_F(DetailItems, BillItemThatTheLibraryHasNotIsTold)
{
    HaveItems();
    Command(u"套清单…"_s).trigger();
    const SPickedQd unknown{0, 1, 1, u"099999999"_s};
    m_windows.Bill().PickBill(&unknown);
    EXPECT_EQ(m_session.Undo().count(), 0);
    EXPECT_THAT(Labels().toStdString(), HasSubstr("清单库里没有 099999999"));
}

TEST_F(DetailItems, PickerGoesWhenTheLibrariesMayBeOthers)
{
    HaveItems();
    Command(u"套清单…"_s).trigger();
    ASSERT_TRUE(m_windows.Bill().IsVisible());
    m_session.RefreshFacts();
    EXPECT_FALSE(m_windows.Bill().IsCreated());
    Command(u"套清单…"_s).trigger();
    EXPECT_TRUE(m_windows.Bill().IsVisible());
}

TEST_F(DetailItems, PickedQuotaItemGoesBelowTheCurrentBillItem)
{
    HaveItems();
    Command(u"套定额…"_s).trigger();
    GoTo(Row(0, 0), ItemTree::NumberColumn);
    m_windows.Bill().PickQuota(&Quota65);
    EXPECT_EQ(Items(), u"031001001001 -示10-1-1 -示10-1-2 -示10-1-7 031001002001"_s);
    const DeStruct& record = Rule().bills[0].quotas[2].record;
    EXPECT_EQ(record.strDeCode, u"DEMO-QDDE-2024"_s);
    EXPECT_EQ(record.strUnitCode, u"10"_s);
    EXPECT_EQ(record.strAnnex, u"是"_s);
    EXPECT_EQ(Tree().Current()->place, (editor::ItemPlace{0, 2}));
    GoTo(Row(1), ItemTree::NumberColumn);
    m_windows.Bill().PickQuota(&Quota65);
    EXPECT_EQ(Items(), u"031001001001 -示10-1-1 -示10-1-2 -示10-1-7 031001002001 -示10-1-7"_s);
}

TEST_F(DetailItems, QuotaItemWithoutABillItemIsToldAndNotAdded)
{
    HaveRules({test::RuleOf({})});
    Show();
    Command(u"套定额…"_s).trigger();
    m_windows.Bill().PickQuota(&Quota65);
    EXPECT_EQ(m_session.Undo().count(), 0);
    EXPECT_THAT(Labels().toStdString(), HasSubstr("先选中一条清单"));
}

TEST_F(DetailItems, ItemWithoutARuleOfItsOwnGetsThatOfTheCategory)
{
    HaveItems();
    SPickedDe bare = Quota65;
    bare.strCalRule.clear();
    GoTo(Row(1), ItemTree::NumberColumn);
    Command(u"套定额…"_s).trigger();
    m_windows.Bill().PickQuota(&bare);
    EXPECT_FALSE(Rule().bills[1].quotas[0].record.strFormula.isEmpty());
}

TEST_F(DetailItems, MessagesOfPickersAreAnsweredAsTheModuleDoes)
{
    HaveItems();
    Command(u"套清单…"_s).trigger();
    EXPECT_EQ(m_windows.Bill().PickBill(nullptr), -1);
    EXPECT_EQ(m_windows.Bill().PickQuota(nullptr), -1);
    EXPECT_EQ(m_windows.Bill().Send(host::PresenceMessage, nullptr), 1);
    EXPECT_EQ(m_session.Undo().count(), 0);
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

TEST_F(DetailItems, ReplacedItemKeepsItsFormulaAndItsQuotaItems)
{
    HaveItems();
    m_windows.SetCalculation(u"L"_s);
    GoTo(Row(0), ItemTree::NumberColumn);
    Press(Qt::Key_F4);
    Press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_THAT(Labels().toStdString(), HasSubstr("替换 031001001001"));
    const SPickedQd other{0, 1, 0, u"031001002"_s};
    test::InModalWindows({Pressing(u"确定"_s)});
    m_windows.Bill().PickBill(&other);
    ASSERT_EQ(Rule().bills.size(), 2U);
    const rules::BillItem& bill = Rule().bills[0];
    EXPECT_TRUE(bill.record.strQdId.startsWith(u"031001002"_s));
    EXPECT_EQ(bill.record.strFormula, u"L"_s);
    EXPECT_EQ(bill.quotas.size(), 2U);
    EXPECT_THAT(Labels().toStdString(), Not(HasSubstr("选择窗口")));
    EXPECT_EQ(m_session.Undo().count(), 2);
}

TEST_F(DetailItems, ReplacingTakesAnItemOfTheSameKindOnly)
{
    HaveItems();
    GoTo(Row(0), ItemTree::NumberColumn);
    Press(Qt::Key_Return, Qt::ControlModifier);
    m_windows.Bill().PickQuota(&Quota65);
    EXPECT_EQ(m_session.Undo().count(), 0);
    EXPECT_THAT(Labels().toStdString(), HasSubstr("要换的是清单"));
    for (QPushButton* button : m_panel->findChildren<QPushButton*>())
        if (button->text() == u"不换了"_s) button->click();
    m_windows.Bill().PickQuota(&Quota65);
    EXPECT_EQ(m_session.Undo().count(), 1) << "it is added again";
}

TEST_F(DetailQuotaMode, ShowsAndAddsQuotaItemsAlone)
{
    EXPECT_EQ(Tree().headerItem()->text(ItemTree::NumberColumn), u"定额编号"_s);
    ASSERT_EQ(Tree().topLevelItemCount(), 2);
    EXPECT_FALSE(Command(u"套清单…"_s).isVisible());
    Command(u"套定额…"_s).trigger();
    EXPECT_TRUE(m_windows.Quota().IsVisible());
    m_windows.Quota().PickQuota(&Quota65);
    EXPECT_EQ(Items(), u"-示10-1-1 -示10-1-2 -示10-1-7"_s);
    EXPECT_EQ(Rule().quotas.back().record.strDeCode, u"DEMO-DE-2024"_s);
    EXPECT_EQ(Tree().Current()->place, (editor::ItemPlace{-1, 2}));
    Tree().setFocus();
    Press(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(Items(), u"-示10-1-1 -示10-1-7 -示10-1-2"_s);
    Press(Qt::Key_Delete);
    EXPECT_EQ(Items(), u"-示10-1-1 -示10-1-2"_s);
}
