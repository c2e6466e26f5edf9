#include "dialogs/template/TemplateDialog.h"

#include "dialogs/DialogUser.h"
#include "dialogs/template/SampleDialog.h"
#include "host/UserMessage.h"
#include "support/MessageRecorder.h"
#include "widgets/ListControls.h"
#include "widgets/TreeControl.h"
#include "xml/Error.h"

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabWidget>

#include <gtest/gtest.h>

#include <stdexcept>

using namespace test::sample;
using test::PlainDialog;

TEST(TemplateDialog, CommandsReachTheirHandlers)
{
    NotingDialog dialog;
    dialog.Note(DialogEvent::Command, 10, u"button"_s);
    dialog.Note(DialogEvent::Command, 16, u"radio"_s);
    dialog.Note(DialogEvent::Command, 19, u"check"_s);
    dialog.Note(DialogEvent::Command, 24, u"static"_s);
    test::Open(dialog);
    for (const int id : {10, 16, 19, 24})
        test::Click(dialog, id);
    EXPECT_EQ(dialog.Notes(), (CStringArray{u"init"_s, u"button"_s, u"radio"_s, u"check"_s, u"static"_s}));
}

TEST(TemplateDialog, NotifyingStaticIsReachedByTheKeyboard)
{
    NotingDialog dialog;
    dialog.Note(DialogEvent::Command, 24, u"static"_s);
    test::Open(dialog);
    dialog.GetDlgItem(24)->setFocus();
    test::Press(dialog, Qt::Key_Space);
    test::Press(dialog, Qt::Key_Return);
    EXPECT_EQ(dialog.Notes(), (CStringArray{u"init"_s, u"static"_s, u"static"_s}));
    EXPECT_TRUE(dialog.isVisible());
}

TEST(TemplateDialog, LaterHandlerReplacesTheEarlier)
{
    NotingDialog dialog;
    dialog.Note(DialogEvent::Command, 10, u"first"_s);
    dialog.Note(DialogEvent::Command, 10, u"second"_s);
    test::Open(dialog);
    test::Click(dialog, 10);
    EXPECT_EQ(dialog.Notes(), (CStringArray{u"init"_s, u"second"_s}));
}

TEST(TemplateDialog, SelectionByTheUserIsHeardAndByCodeIsNot)
{
    NotingDialog dialog;
    dialog.Note(DialogEvent::ListSelection, 11, u"list"_s);
    dialog.Note(DialogEvent::TabSelection, 22, u"tab"_s);
    test::Open(dialog);
    auto& list = dialog.Item<QListWidget>(11);
    auto& tab = dialog.Item<QTabWidget>(22);
    for (const CString& text : {u"a"_s, u"b"_s}) {
        widgets::AddString(list, text);
        const QSignalBlocker quiet(tab);
        tab.addTab(new QWidget, text);
    }
    widgets::SetCurSel(list, 0);
    widgets::SetCurSel(tab, 1);
    widgets::ResetContent(dialog.Item<QComboBox>(14));
    EXPECT_EQ(dialog.Notes(), CStringArray{u"init"_s});
    test::ClickLine(dialog, 11, 1);
    tab.setFocus();
    test::Press(dialog, Qt::Key_Left);
    EXPECT_EQ(dialog.Notes(), (CStringArray{u"init"_s, u"list"_s, u"tab"_s}));
}

TEST(TemplateDialog, TreeAnnouncesAChangeWhileTheOldItemIsSelected)
{
    PlainDialog dialog(AllKinds, nullptr);
    CStringArray seen;
    dialog.Create();
    auto& tree = dialog.Item<widgets::TreeControl>(20);
    const auto selected = [&] { return tree.GetSelectedItem() ? tree.GetSelectedItem()->text(0) : u"-"_s; };
    dialog.On(DialogEvent::TreeSelectionChanging, 20, [&] { seen.append(u"changing "_s + selected()); });
    dialog.On(DialogEvent::TreeSelectionChanged, 20, [&] { seen.append(u"changed "_s + selected()); });
    for (const CString& text : {u"a"_s, u"b"_s})
        tree.addTopLevelItem(new QTreeWidgetItem({text}));
    tree.setCurrentItem(tree.topLevelItem(0));
    EXPECT_EQ(seen, (CStringArray{u"changing -"_s, u"changed a"_s}));
    tree.setCurrentItem(tree.topLevelItem(0));
    EXPECT_EQ(seen.size(), 2);
    seen.clear();
    test::Open(dialog);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {},
                      tree.visualItemRect(tree.topLevelItem(1)).center());
    EXPECT_EQ(seen, (CStringArray{u"changing a"_s, u"changed b"_s}));
    seen.clear();
    QTest::keyClick(&tree, Qt::Key_Up);
    EXPECT_EQ(seen, (CStringArray{u"changing b"_s, u"changed a"_s}));
}

TEST(TemplateDialog, RowOfAReportListIsHeardInsideTheCallThatSelectsIt)
{
    NotingDialog dialog;
    dialog.Note(DialogEvent::ListItemChanged, 21, u"row"_s);
    dialog.Create();
    auto& list = dialog.Item<QTreeWidget>(21);
    list.addTopLevelItem(new QTreeWidgetItem({u"1"_s}));
    list.setCurrentItem(list.topLevelItem(0));
    EXPECT_EQ(dialog.Notes(), (CStringArray{u"init"_s, u"row"_s}));
}

TEST(TemplateDialog, UserMessageIsAnswered)
{
    PlainDialog dialog(AllKinds, nullptr);
    const int record = 7;
    const void* seen = nullptr;
    dialog.On(DialogEvent::UserMessage, host::PresenceMessage, [&](Notice& notice) {
        seen = notice.record;
        notice.result = 1;
    });
    host::UserMessage known(host::PresenceMessage, &record);
    host::UserMessage unknown(host::QdPickedMessage, &record);
    QCoreApplication::sendEvent(&dialog, &known);
    QCoreApplication::sendEvent(&dialog, &unknown);
    EXPECT_EQ(seen, &record);
    EXPECT_EQ(known.Result(), 1);
    EXPECT_EQ(unknown.Result(), 0);
}

// Ways out.

TEST(TemplateDialog, EnterPressesTheDefaultButton)
{
    NotingDialog dialog;
    test::Open(dialog);
    dialog.GetDlgItem(12)->setFocus();
    test::Press(dialog, Qt::Key_Return);
    EXPECT_EQ(dialog.Notes(), (CStringArray{u"init"_s, u"ok"_s}));
    EXPECT_EQ(dialog.result(), IdOk);
}

TEST(TemplateDialog, EnterOnAnotherPushButtonDoesNotPressTheDefaultOne)
{
    NotingDialog dialog;
    dialog.Note(DialogEvent::Command, 10, u"button"_s);
    test::Open(dialog);
    dialog.GetDlgItem(10)->setFocus();
    test::Press(dialog, Qt::Key_Enter);
    EXPECT_EQ(dialog.Notes(), (CStringArray{u"init"_s, u"button"_s}));
    EXPECT_TRUE(dialog.isVisible());
}

TEST(TemplateDialog, EnterDoesNothingWhereNoButtonIsTheDefault)
{
    class Dialog : public PlainDialog
    {
    public:
        Dialog() : PlainDialog(NoDefault, nullptr) {}
    };
    Dialog dialog;
    int pressed = 0;
    dialog.On(DialogEvent::Command, 10, [&] { ++pressed; });
    dialog.On(DialogEvent::Command, IdOk, [&] { ++pressed; });
    test::Open(dialog);
    for (const int id : {10, 12}) {
        dialog.GetDlgItem(id)->setFocus();
        test::Press(dialog, Qt::Key_Return);
        test::Press(dialog, Qt::Key_Enter);
    }
    EXPECT_EQ(pressed, 0);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_FALSE(dialog.Item<QPushButton>(10).autoDefault());
}

TEST(TemplateDialog, EscapeReachesTheCancelStep)
{
    NotingDialog dialog;
    test::Open(dialog);
    test::Press(dialog, Qt::Key_Escape);
    EXPECT_EQ(dialog.Notes(), (CStringArray{u"init"_s, u"cancel"_s}));
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), IdCancel);
}

TEST(TemplateDialog, CloseBoxReachesTheCancelStepThroughTheCloseStep)
{
    NotingDialog dialog;
    test::Open(dialog);
    EXPECT_TRUE(dialog.close());
    EXPECT_EQ(dialog.Notes(), (CStringArray{u"init"_s, u"close"_s, u"cancel"_s}));
    EXPECT_EQ(dialog.result(), IdCancel);
}

TEST(TemplateDialog, ModalRunGivesWhatTheDialogEndedWith)
{
    PlainDialog dialog(AllKinds, nullptr);
    QMetaObject::invokeMethod(
        &dialog, [&] { dialog.EndDialog(7); }, Qt::QueuedConnection);
    EXPECT_EQ(dialog.DoModal(), 7);
}

TEST(TemplateDialog, ModalRunOfAHiddenWindowCountsAsCancelled)
{
    PlainDialog dialog(AllKinds, nullptr);
    QMetaObject::invokeMethod(
        &dialog, [&] { dialog.hide(); }, Qt::QueuedConnection);
    EXPECT_EQ(dialog.DoModal(), IdCancel);
}

// Errors.

TEST(TemplateDialog, RaisedErrorIsShownAndTheDialogStaysOpen)
{
    test::MessageRecorder messages;
    PlainDialog dialog(AllKinds, nullptr);
    dialog.On(DialogEvent::Command, 10, [] { throw xml::Error(u"名称不合法：<"_s); });
    test::Open(dialog);
    test::Click(dialog, 10);
    ASSERT_EQ(messages.Messages().size(), 1U);
    EXPECT_EQ(messages.Messages().front().kind, platform::MessageKind::Warning);
    EXPECT_EQ(messages.Messages().front().text, u"名称不合法：<"_s);
    EXPECT_EQ(messages.Messages().front().caption, u"Norvasoft"_s);
    EXPECT_TRUE(dialog.isVisible());
}

namespace {

/// Lets a modal run of a dialog, which there should be none of, end at once.
void EndWhenShown(PlainDialog& dialog)
{
    QMetaObject::invokeMethod(
        &dialog, [&dialog] { dialog.EndDialog(IdCancel); }, Qt::QueuedConnection);
}

} // namespace

TEST(TemplateDialog, ErrorThatIsNoneOfTheStandardsIsShownToo)
{
    test::MessageRecorder messages;
    PlainDialog dialog(AllKinds, nullptr);
    dialog.On(DialogEvent::Command, 10, [] { throw 7; });
    test::Open(dialog);
    test::Click(dialog, 10);
    ASSERT_EQ(messages.Texts(), CStringArray{u"操作没有完成，原因不明"_s});
    EXPECT_EQ(messages.Messages().front().kind, platform::MessageKind::Warning);
    EXPECT_TRUE(dialog.isVisible());
}

TEST(TemplateDialog, ErrorOfTheInitStepGoesToWhoeverOpensTheDialogWhichIsNeverShown)
{
    test::MessageRecorder messages;
    NotingDialog dialog;
    dialog.m_duringInit = [] { throw std::runtime_error("init"); };
    for (int call = 0; call < 2; ++call) {
        EndWhenShown(dialog);
        EXPECT_THROW(dialog.DoModal(), std::runtime_error) << call;
    }
    EXPECT_THROW(dialog.Create(), std::runtime_error);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.Notes(), CStringArray{u"init"_s});
    EXPECT_EQ(messages.Texts(), CStringArray());
}

TEST(TemplateDialog, ErrorOfAnInnerDialogsInitStepIsShownByTheDialogThatOpensIt)
{
    test::MessageRecorder messages;
    PlainDialog dialog(AllKinds, nullptr);
    bool cameBack = false;
    dialog.On(DialogEvent::Command, 10, [&cameBack] {
        NotingDialog inner;
        inner.m_duringInit = [] { throw std::runtime_error("inner"); };
        EndWhenShown(inner);
        inner.DoModal();
        cameBack = true;
    });
    test::Open(dialog);
    test::Click(dialog, 10);
    EXPECT_EQ(messages.Texts(), CStringArray{u"inner"_s});
    EXPECT_FALSE(cameBack);
    EXPECT_TRUE(dialog.isVisible());
}

TEST(TemplateDialog, ErrorOfTheOkStepKeepsTheDialogOpen)
{
    test::MessageRecorder messages;
    NotingDialog dialog;
    dialog.m_duringOk = [] { throw std::out_of_range("index"); };
    test::Open(dialog);
    test::Click(dialog, 1);
    EXPECT_EQ(messages.Texts(), CStringArray{u"index"_s});
    EXPECT_TRUE(dialog.isVisible());
}

TEST(TemplateDialog, ErrorWhileClosingKeepsTheDialogOpen)
{
    test::MessageRecorder messages;
    PlainDialog dialog(AllKinds, nullptr);
    dialog.On(DialogEvent::Command, IdCancel, [] { throw std::runtime_error("save"); });
    test::Open(dialog);
    EXPECT_FALSE(dialog.close());
    EXPECT_EQ(messages.Texts(), CStringArray{u"save"_s});
    EXPECT_TRUE(dialog.isVisible());
}

TEST(TemplateDialog, ThousandRoundsLeaveNoWidgetBehind)
{
    const auto before = QApplication::allWidgets().size();
    for (int round = 0; round < 1000; ++round) {
        PlainDialog dialog(AllKinds, nullptr);
        test::Open(dialog);
        test::Type(dialog, 12, u"x"_s);
        dialog.close();
    }
    EXPECT_EQ(QApplication::allWidgets().size(), before);
}
