#include "dialogs/AutoConfigFixture.h"

#include "platform/Apart.h"
#include "support/FaultyFileSystem.h"

#include <QtCore/QTimer>
#include <QtGui/QSessionManager>
#include <QtWidgets/QApplication>

using namespace test::autoconfig;

// The ways out of the dialog: each saves, and a save that fails keeps it open.

namespace {

/// Longer than the former name, so that the file needs more room.
const CString LongerName = u"一个比原来长得多的新名字，文件因此要在磁盘上占更多的地方"_s;

/// A rule with a bill item whose name is being edited, and what is expected of a way out.
class AutoConfigClosing : public AutoConfigTest
{
protected:
    void OpenWithAnEdit()
    {
        m_id = PrepareRule({u"DN15"_s});
        PrepareBill(m_id, u"031001001001"_s);
        Open();
        Press(PickerButton);
        EditCell(1, 2, LongerName);
    }
    CString SavedName()
    {
        CQdDeConfigPresenter presenter(FilePath(u"DefaultConfig"_s));
        CPath path = WaterPipes;
        path.configId = m_id;
        return presenter.GetConfig(path)->GetQd(1)->GetRecord().strName;
    }
    void ExpectClosedAndSaved()
    {
        EXPECT_FALSE(m_dialog->isVisible());
        EXPECT_EQ(m_dialog->result(), dialogs::IdCancel);
        EXPECT_EQ(SavedName(), LongerName);
        EXPECT_FALSE(m_windows.Bill().IsVisible());
        EXPECT_EQ(Messages().Texts(), CStringArray());
    }
    void ExpectOpenWithTheReason()
    {
        EXPECT_TRUE(m_dialog->isVisible());
        ASSERT_EQ(Messages().Texts().size(), 1);
        EXPECT_TRUE(Messages().Texts().first().contains(u"DefaultConfig.xml"_s));
        EXPECT_EQ(GridColumn(2), CStringArray{LongerName});
        EXPECT_TRUE(m_windows.Bill().IsVisible());
    }
    static void AskToQuit()
    {
        QEvent quit(QEvent::Quit);
        QCoreApplication::sendEvent(qApp, &quit);
        // A program that quits opens no loop any more; the next test must be able to.
        QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
        QApplication::exec();
    }

    int m_id = 0;
};

} // namespace

TEST_F(AutoConfigClosing, EscapeSaves)
{
    OpenWithAnEdit();
    Key(Qt::Key_Escape); // ends the edit and gives it up
    EXPECT_TRUE(m_dialog->isVisible());
    EditCell(1, 2, LongerName);
    Key(Qt::Key_Return);
    Key(Qt::Key_Escape);
    ExpectClosedAndSaved();
}

TEST_F(AutoConfigClosing, CloseBoxSavesAnOpenEditToo)
{
    OpenWithAnEdit();
    Close();
    ExpectClosedAndSaved();
}

TEST_F(AutoConfigClosing, RequestToQuitSaves)
{
    OpenWithAnEdit();
    AskToQuit();
    ExpectClosedAndSaved();
}

TEST_F(AutoConfigClosing, LogOffSavesAndLeavesTheDialogToTheSession)
{
    OpenWithAnEdit();
    auto* session = qApp->findChild<QSessionManager*>();
    ASSERT_NE(session, nullptr);
    emit qApp->commitDataRequest(*session);
    EXPECT_EQ(SavedName(), LongerName);
    EXPECT_TRUE(m_dialog->isVisible());
}

TEST_F(AutoConfigClosing, LogOffInTheMiddleOfASaveMakesNoSecondOne)
{
    OpenWithAnEdit();
    auto* session = qApp->findChild<QSessionManager*>();
    ASSERT_NE(session, nullptr);
    test::FaultyFileSystem files;
    Key(Qt::Key_Escape);
    Key(Qt::Key_Escape);
    const int once = files.WritePoints();
    EXPECT_GT(once, 0);
    test::Open(*m_dialog);
    Press(AddRuleButton);
    int turns = 0;
    const platform::ScopedPieceRunner runner([](const platform::Piece& piece) { piece(); },
                                             [&] {
                                                 if (turns++ == 0) emit qApp->commitDataRequest(*session);
                                             });
    Key(Qt::Key_Escape);
    EXPECT_GT(turns, 0);
    EXPECT_EQ(files.WritePoints(), 2 * once);
}

TEST_F(AutoConfigClosing, ButtonPressedInTheMiddleOfASaveDoesNothing)
{
    OpenWithAnEdit();
    int turns = 0;
    const platform::ScopedPieceRunner runner([](const platform::Piece& piece) { piece(); },
                                             [&] {
                                                 if (turns++ == 0) Press(AddRuleButton);
                                             });
    const qsizetype before = RuleTexts().size();
    Key(Qt::Key_Escape);
    Key(Qt::Key_Escape);
    EXPECT_GT(turns, 0);
    EXPECT_EQ(RuleTexts().size(), before);
}

TEST_F(AutoConfigClosing, CloseBoxSavesTwiceAndEscapeOnce)
{
    OpenWithAnEdit();
    test::FaultyFileSystem files;
    Key(Qt::Key_Escape);
    Key(Qt::Key_Escape);
    const int once = files.WritePoints();
    EXPECT_GT(once, 0);
    test::Open(*m_dialog);
    Press(AddRuleButton);
    Close();
    EXPECT_EQ(files.WritePoints(), 3 * once);
}

TEST_F(AutoConfigClosing, SaveThatFailsOnEscapeLeavesTheDialogOpenWithTheEdits)
{
    OpenWithAnEdit();
    Key(Qt::Key_Return);
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseOpen);
    Key(Qt::Key_Escape);
    ExpectOpenWithTheReason();
    Messages().Clear();
    files.Heal();
    Key(Qt::Key_Escape);
    ExpectClosedAndSaved();
}

TEST_F(AutoConfigClosing, FullDiskOnTheCloseBoxIsReportedOnceAndLeavesTheDialogOpen)
{
    OpenWithAnEdit();
    test::FaultyFileSystem files;
    files.Inject(test::Fault::NoRoom);
    Close();
    ExpectOpenWithTheReason();
    Messages().Clear();
    files.Heal();
    Close();
    ExpectClosedAndSaved();
}

TEST_F(AutoConfigClosing, SaveThatFailsOnARequestToQuitLeavesTheDialogOpen)
{
    OpenWithAnEdit();
    test::FaultyFileSystem files;
    files.Inject(test::Fault::NoRoom);
    AskToQuit();
    ExpectOpenWithTheReason();
}

TEST_F(AutoConfigClosing, SaveThatFailsAtALogOffIsReportedWhereTheSessionAllowsIt)
{
    OpenWithAnEdit();
    test::FaultyFileSystem files;
    files.Inject(test::Fault::NoRoom);
    EXPECT_FALSE(m_dialog->SaveForLogOff([] { return true; }));
    ExpectOpenWithTheReason();
}

TEST_F(AutoConfigClosing, SaveThatFailsAtALogOffIsSilentWhereTheSessionForbidsWindows)
{
    OpenWithAnEdit();
    test::FaultyFileSystem files;
    files.Inject(test::Fault::NoRoom);
    auto* session = qApp->findChild<QSessionManager*>();
    ASSERT_FALSE(session->allowsErrorInteraction()); // this platform's never does
    emit qApp->commitDataRequest(*session);
    EXPECT_EQ(Messages().Texts(), CStringArray());
    EXPECT_TRUE(m_dialog->isVisible());
    EXPECT_EQ(GridColumn(2), CStringArray{LongerName});
}

TEST_F(AutoConfigClosing, SessionIsNotAskedForAWindowWhenTheSaveSucceeds)
{
    OpenWithAnEdit();
    EXPECT_TRUE(m_dialog->SaveForLogOff([] {
        ADD_FAILURE() << "asked";
        return true;
    }));
    EXPECT_EQ(SavedName(), LongerName);
}

TEST_F(AutoConfigClosing, ModalRunEndsWithCancel)
{
    m_dialog = std::make_unique<OpenAutoConfigDlg>(CString());
    QTimer::singleShot(0, m_dialog.get(), [this] { Key(Qt::Key_Escape); });
    EXPECT_EQ(m_dialog->DoModal(), dialogs::IdCancel);
}
