#include "dialogs/AutoConfigFixture.h"

#include "host/UserMessage.h"
#include "support/Patience.h"
#include "widgets/GroupBox.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QRegion>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QToolTip>

using namespace test::autoconfig;

// The frame: how the dialog starts, its controls and its pickers.

using AutoConfigFrame = AutoConfigTest;

TEST_F(AutoConfigFrame, CaptionAndButtonSpeakOfBillMode)
{
    Open();
    EXPECT_EQ(Caption(), u"自动套配置-[ 清单模式: DefaultConfig ]"_s);
    EXPECT_EQ(m_dialog->ItemText(PickerButton), u"套清单>>"_s);
}

TEST_F(AutoConfigFrame, CaptionAndButtonSpeakOfQuotaMode)
{
    SetMode(SQdDeInfo::QuotaMode);
    Open();
    EXPECT_EQ(Caption(), u"自动套配置-[ 定额模式: DefaultConfig ]"_s);
    EXPECT_EQ(m_dialog->ItemText(PickerButton), u"套定额>>"_s);
}

TEST_F(AutoConfigFrame, UnknownModeLeavesTheButtonAndCountsAsQuotaMode)
{
    SetMode(static_cast<SQdDeInfo::EQdDeMode>(2));
    const int id = PrepareRule({});
    PrepareQuota(id, u"9-1"_s);
    Open();
    EXPECT_EQ(Caption(), u"自动套配置-[ 定额模式: DefaultConfig ]"_s);
    EXPECT_EQ(m_dialog->ItemText(PickerButton), u"套定额>>"_s);
    EXPECT_EQ(GridColumn(), CStringArray{u"9-1"_s});
    EXPECT_EQ(Grid().GetItemText(0, 1), u"清单/定额编号"_s); // the headings take it for bill mode
    Press(PickerButton);
    EXPECT_TRUE(m_windows.Bill().IsVisible());
    EXPECT_FALSE(m_windows.Quota().IsVisible());
}

TEST_F(AutoConfigFrame, EditsTheGivenFileAndNotTheCurrentOne)
{
    PrepareRule({u"DN15"_s});
    Open(FilePath(u"别的"_s));
    EXPECT_EQ(RuleTexts(), CStringArray{u"其它"_s});
    Press(AddRuleButton);
    Close();
    EXPECT_EQ(Saved(WaterPipes, u"别的"_s).size(), 2);
    EXPECT_EQ(Saved(), (CStringArray{u"2 管径＝DN15;"_s, u"1 其它"_s}));
}

TEST_F(AutoConfigFrame, StandsInTheMiddleOfTheMainFrame)
{
    QWidget frame;
    frame.setGeometry(301, 203, 901, 701);
    frame.show();
    m_windows.SetMainFrame(&frame);
    Open();
    const QRect outer = frame.frameGeometry();
    const QRect own = m_dialog->frameGeometry();
    EXPECT_EQ(own.topLeft(), QPoint(outer.width() / 2 - own.width() / 2 + outer.left(),
                                    outer.height() / 2 - own.height() / 2 + outer.top()));
}

TEST_F(AutoConfigFrame, RuleListHasTwoColumnsOfFixedWidth)
{
    Open();
    const QHeaderView& header = *Rules().header();
    EXPECT_EQ(header.count(), 2);
    EXPECT_EQ(Rules().headerItem()->text(0), u"序号"_s);
    EXPECT_EQ(Rules().headerItem()->text(1), u"范围"_s);
    EXPECT_EQ(header.sectionSize(1) * 40, header.sectionSize(0) * 450);
}

// They are told for small fonts, which a table of widths in pixels was drawn for.
TEST_F(AutoConfigFrame, RuleListColumnsAre40And450PixelsWideAtASmallFont)
{
    const QFont usual = QApplication::font();
    QFont small = usual;
    small.setPointSize(9);
    QApplication::setFont(small);
    Open();
    EXPECT_EQ(Rules().header()->sectionSize(0), 40);
    EXPECT_EQ(Rules().header()->sectionSize(1), 450);
    m_dialog.reset();
    QApplication::setFont(usual);
}

TEST_F(AutoConfigFrame, GridIsSetUpWithFiveColumnsBeforeAnyCategoryIsSelected)
{
    Host().RenameSmall(u"111"_s, u"配管配线"_s);
    Host().RenameSmall(u"112"_s, u"组合管线"_s); // nothing can be selected at the start
    Open();
    EXPECT_EQ(SelectedCategory(), CString());
    EXPECT_EQ(Grid().GetColumnCount(), 5);
    EXPECT_EQ(Grid().GetItemText(0, 4), u"计算结果编辑"_s);
    EXPECT_EQ(GridColumn(), CStringArray());
}

TEST_F(AutoConfigFrame, RuleListKeepsTheWidthsThatTheUserDraggedAndScalesThemWithTheFont)
{
    Open();
    QHeaderView& header = *Rules().header();
    header.resizeSection(1, 300);
    m_dialog->SetItemText(PickerButton, u"一个长得多的标题>>"_s); // lays out anew
    EXPECT_EQ(header.sectionSize(1), 300);
    QFont large = m_dialog->font();
    large.setPointSize(18);
    m_dialog->setFont(large);
    const int grown = header.sectionSize(1);
    EXPECT_GT(grown, 400);
    m_dialog->SetItemText(PickerButton, u"套清单>>"_s);
    EXPECT_EQ(header.sectionSize(1), grown);
}

TEST_F(AutoConfigFrame, GridStandsOnItsPlaceAndComesAfterThePickerButton)
{
    Open();
    EXPECT_EQ(Grid().geometry(), m_dialog->GetDlgItem(GridPlace)->geometry());
    EXPECT_EQ(m_dialog->GetDlgItem(PickerButton)->nextInFocusChain(), &Grid());
}

TEST_F(AutoConfigFrame, WizardControlsStayHidden)
{
    Open();
    for (const int id : {7006, 7007, 7008, 2002, 2003, 2004, 2005, 2006, 2007})
        EXPECT_FALSE(m_dialog->GetDlgItem(id)->isVisible()) << id;
}

TEST_F(AutoConfigFrame, PresenceMessageIsAnsweredWithOne)
{
    Open();
    EXPECT_EQ(m_windows.Bill().Send(host::PresenceMessage, nullptr), 1);
    EXPECT_EQ(m_windows.Bill().Send(host::PresenceMessage + 1, nullptr), 0);
}

TEST_F(AutoConfigFrame, PickersAreMadeHiddenAndDoNotAskForNumbers)
{
    Open();
    EXPECT_EQ(m_windows.Bill().Calls(), CStringArray{u"create"_s});
    EXPECT_EQ(m_windows.Quota().Calls(), CStringArray{u"create"_s});
    EXPECT_FALSE(m_windows.Bill().AsksNumber());
}

TEST_F(AutoConfigFrame, ButtonShowsPlacesAndLoadsTheBillPickerAndHidesItAgain)
{
    Open();
    m_windows.Bill().ForgetCalls();
    Press(PickerButton);
    EXPECT_EQ(m_windows.Bill().Calls(),
              (CStringArray{u"show"_s, u"right"_s, u"load"_s, u"position 10.1.1"_s}));
    Press(PickerButton);
    EXPECT_EQ(m_windows.Bill().Calls().last(), u"hide"_s);
    EXPECT_FALSE(m_windows.Quota().IsVisible());
}

TEST_F(AutoConfigFrame, ButtonPointsTheBillPickerAtABigCategoryToo)
{
    Host().SetIndexPath(u"给排水\\管道\\"_s, u"10\\1"_s);
    Open();
    SelectCategory(u"管道"_s);
    m_windows.Bill().ForgetCalls();
    Press(PickerButton);
    EXPECT_EQ(m_windows.Bill().Calls(), (CStringArray{u"show"_s, u"right"_s, u"load"_s, u"position 10.1"_s}));
}

TEST_F(AutoConfigFrame, ButtonAsksForThePositionOfAnEmptyPathWhereNothingIsSelected)
{
    Host().RemoveSmall(u"111"_s);
    Host().RemoveSmall(u"112"_s);
    Host().SetIndexPath(CString(), u"9\\9"_s);
    Open();
    ASSERT_EQ(SelectedCategory(), CString());
    m_windows.Bill().ForgetCalls();
    Press(PickerButton);
    EXPECT_EQ(m_windows.Bill().Calls(), (CStringArray{u"show"_s, u"right"_s, u"load"_s, u"position 9.9"_s}));
}

TEST_F(AutoConfigFrame, ButtonEnablesShowsAndLoadsTheQuotaPickerAndHidesItAgain)
{
    SetMode(SQdDeInfo::QuotaMode);
    Open();
    m_windows.Quota().ForgetCalls();
    Press(PickerButton);
    EXPECT_EQ(m_windows.Quota().Calls(), (CStringArray{u"enable"_s, u"show"_s, u"right"_s, u"load"_s}));
    Press(PickerButton);
    EXPECT_EQ(m_windows.Quota().Calls().last(), u"hide"_s);
    EXPECT_FALSE(m_windows.Bill().IsVisible());
}

TEST_F(AutoConfigFrame, PickerThatTheUserClosedComesUpAgain)
{
    Open();
    Press(PickerButton);
    m_windows.Bill().Close();
    Press(PickerButton);
    EXPECT_TRUE(m_windows.Bill().IsVisible());
}

TEST_F(AutoConfigFrame, EnterNeitherClosesNorPressesAButton)
{
    const int id = PrepareRule({u"DN15"_s});
    PrepareBill(id, u"031001001001"_s);
    Open();
    const CStringArray before = Stored();
    for (const int control :
         {2000, 1008, 1009, 1010, 1021, 1022, 7000, 7003, 7004, 7005, 7009, 1011, 1012, 1014, 1015, 50002}) {
        m_dialog->GetDlgItem(control)->setFocus();
        Key(Qt::Key_Return);
        Key(Qt::Key_Enter);
        ASSERT_TRUE(m_dialog->isVisible()) << control;
        ASSERT_EQ(Stored(), before) << control;
    }
    EXPECT_FALSE(m_windows.Bill().IsVisible());
}

TEST_F(AutoConfigFrame, EveryControlThatTheUserReachesHasANameForScreenReaders)
{
    Open();
    for (QWidget* control : m_dialog->Content()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (control->focusPolicy() == Qt::NoFocus) continue;
        EXPECT_FALSE(control->accessibleName().isEmpty()) << control->objectName().toStdString();
    }
}

TEST_F(AutoConfigFrame, NoFrameOfAGroupRunsBehindAButton)
{
    const QFont font = QApplication::font();
    for (const int points : {font.pointSize(), 16}) {
        QApplication::setFont(QFont(font.family(), points));
        Open();
        int groups = 0;
        for (const auto* group : m_dialog->findChildren<QGroupBox*>()) {
            const auto* framed = dynamic_cast<const widgets::GroupBox*>(group);
            ASSERT_NE(framed, nullptr) << group->title().toStdString();
            ++groups;
            const QRect frame = framed->FrameRect().translated(group->pos());
            const QRegion line = QRegion(frame) - frame.adjusted(1, 1, -1, -1);
            for (const int id :
                 {MoveUpButton, MoveDownButton, AddRuleButton, CopyRuleButton, DeleteRuleButton,
                  AddConditionButton, RemoveConditionButton, DeleteItemsButton, PickerButton})
                EXPECT_FALSE(line.intersects(m_dialog->GetDlgItem(id)->geometry()))
                    << group->title().toStdString() << ' ' << id << ' ' << points;
        }
        EXPECT_EQ(groups, 3);
        Close();
    }
    QApplication::setFont(font);
}

TEST_F(AutoConfigFrame, TextsThatAreCutOffShowWholeInATip)
{
    const CString longText(200, u'长');
    const int id = PrepareRule({longText});
    PrepareBill(id, u"031001001001"_s);
    Open();
    const auto tipAt = [](QWidget& cells, const QPoint& point) {
        QHelpEvent help(QEvent::ToolTip, point, cells.mapToGlobal(point));
        QCoreApplication::sendEvent(&cells, &help);
        return QToolTip::text();
    };
    const auto ruleTip = [&](int row) {
        const QModelIndex cell = Rules().model()->index(row, 1);
        return tipAt(*Rules().viewport(), Rules().visualRect(cell).topLeft() + QPoint(5, 5));
    };
    const auto waitUntilTipGoes = [] {
        test::WaitInLoopFor(u"end of the tip"_s, [] { return !QToolTip::isVisible(); });
    };
    EXPECT_TRUE(ruleTip(0).contains(longText));
    ruleTip(1);
    waitUntilTipGoes();
    tipAt(*Tree().viewport(), Tree().visualItemRect(Category(u"给水管"_s)).center());
    waitUntilTipGoes();
    Grid().SetItemText(1, 2, longText);
    const QRect name = Grid().visualRect(Grid().model()->index(0, 1));
    EXPECT_TRUE(tipAt(*Grid().viewport(), name.center()).contains(longText));
    QToolTip::hideText();
    waitUntilTipGoes();
}
