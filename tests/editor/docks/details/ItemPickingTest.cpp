#include "dialogs/ModalUser.h"
#include "editor/docks/details/DetailItems.h"
#include "editor/messages/ErrorBox.h"
#include "host/UserMessage.h"

#include <QtGui/QAction>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QPushButton>

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

class PickedItems : public test::DetailItems
{
protected:
    using DetailItems::DetailItems;

    /// Opens the picker by the command and picks.
    int PickBill(const SPickedQd& picked)
    {
        Command(u"套清单…"_s).trigger();
        test::InModalWindows({Pressing(u"确定"_s)});
        return m_windows.Bill().PickBill(&picked);
    }
};

class DetailQuotaMode : public PickedItems
{
protected:
    DetailQuotaMode() : PickedItems(SQdDeInfo::QuotaMode)
    {
        HaveRules({test::RuleOf(
            {}, {},
            {test::Quota(u"示10-1-1"_s, u"DEMO-DE-2024"_s), test::Quota(u"示10-1-2"_s, u"DEMO-DE-2024"_s)})});
        Show();
    }
};

} // namespace

TEST_F(PickedItems, PickerComesBesideTheWindowTurnedToTheCategory)
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

TEST_F(PickedItems, PickedBillItemGoesThroughTheNumberDialogIntoTheRule)
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

TEST_F(PickedItems, CancelledNumberDialogLeavesTheRule)
{
    HaveItems();
    Command(u"套清单…"_s).trigger();
    test::InModalWindows({Pressing(u"取消"_s)});
    m_windows.Bill().PickBill(&GalvanizedPipe);
    EXPECT_EQ(Rule().bills.size(), 2U);
    EXPECT_EQ(m_session.Undo().count(), 0);
}

TEST_F(PickedItems, NumberThatTheRuleHasIsNotTakenOnceMore)
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

TEST_F(PickedItems, BillItemThatTheLibraryHasNotIsTold)
{
    HaveItems();
    Command(u"套清单…"_s).trigger();
    const SPickedQd unknown{0, 1, 1, u"099999999"_s};
    m_windows.Bill().PickBill(&unknown);
    EXPECT_EQ(m_session.Undo().count(), 0);
    EXPECT_THAT(Labels().toStdString(), HasSubstr("清单库里没有 099999999"));
}

TEST_F(PickedItems, PickerGoesWhenTheLibrariesMayBeOthers)
{
    HaveItems();
    Command(u"套清单…"_s).trigger();
    ASSERT_TRUE(m_windows.Bill().IsVisible());
    m_session.RefreshFacts();
    EXPECT_FALSE(m_windows.Bill().IsCreated());
    Command(u"套清单…"_s).trigger();
    EXPECT_TRUE(m_windows.Bill().IsVisible());
}

TEST_F(PickedItems, PickedQuotaItemGoesBelowTheCurrentBillItem)
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

TEST_F(PickedItems, QuotaItemWithoutABillItemIsToldAndNotAdded)
{
    HaveRules({test::RuleOf({})});
    Show();
    Command(u"套定额…"_s).trigger();
    m_windows.Bill().PickQuota(&Quota65);
    EXPECT_EQ(m_session.Undo().count(), 0);
    EXPECT_THAT(Labels().toStdString(), HasSubstr("先选中一条清单"));
}

TEST_F(PickedItems, ItemWithoutARuleOfItsOwnGetsThatOfTheCategory)
{
    HaveItems();
    SPickedDe bare = Quota65;
    bare.strCalRule.clear();
    GoTo(Row(1), ItemTree::NumberColumn);
    Command(u"套定额…"_s).trigger();
    m_windows.Bill().PickQuota(&bare);
    EXPECT_FALSE(Rule().bills[1].quotas[0].record.strFormula.isEmpty());
}

TEST_F(PickedItems, MessagesOfPickersAreAnsweredAsTheModuleDoes)
{
    HaveItems();
    Command(u"套清单…"_s).trigger();
    EXPECT_EQ(m_windows.Bill().PickBill(nullptr), -1);
    EXPECT_EQ(m_windows.Bill().PickQuota(nullptr), -1);
    EXPECT_EQ(m_windows.Bill().Send(host::PresenceMessage, nullptr), 1);
    EXPECT_EQ(m_session.Undo().count(), 0);
}

TEST_F(PickedItems, ReplacedItemKeepsItsFormulaAndItsQuotaItems)
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

TEST_F(PickedItems, ReplacingTakesAnItemOfTheSameKindOnly)
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

TEST_F(PickedItems, DialogsOfThePanelAreRunAsTheWindowWantsIt)
{
    int running = 0;
    CStringArray seen;
    m_panel = std::make_unique<editor::DetailPanel>(m_session, [&](const auto& step) {
        ++running;
        const bool done = editor::RunGuarded(step);
        --running;
        return done;
    });
    HaveItems();
    const auto leave = [&](const CString& name) {
        return [&, name](QWidget& window) {
            seen.append(name + CString::number(running));
            window.close();
        };
    };
    Command(u"套清单…"_s).trigger();
    test::InModalWindows({leave(u"编号"_s)});
    m_windows.Bill().PickBill(&GalvanizedPipe);
    test::InModalWindows({leave(u"系列"_s)});
    Command(u"系列…"_s).trigger();
    EXPECT_EQ(seen, (CStringArray{u"编号1"_s, u"系列1"_s}));
    EXPECT_EQ(running, 0);
}

TEST_F(PickedItems, NoDialogComesWhileTheWindowRunsAnotherCommand)
{
    m_panel = std::make_unique<editor::DetailPanel>(m_session, [](const auto&) { return false; });
    HaveItems();
    m_windows.SetCalculation(u"L"_s);
    GoTo(Row(0), ItemTree::FormulaColumn);
    Press(Qt::Key_F4);
    Press(Qt::Key_Return);
    EXPECT_TRUE(m_windows.Calculations().isEmpty());
    Command(u"套清单…"_s).trigger();
    m_windows.Bill().PickBill(&GalvanizedPipe);
    Command(u"系列…"_s).trigger();
    EXPECT_EQ(m_session.Undo().count(), 0);
}
