#include "editor/dialogs/HistoryWindow.h"

#include "editor/SampleFiles.h"
#include "support/WindowWaits.h"

#include "editor/EditorFixture.h"
#include "embedded/data/history/History.h"
#include "embedded/data/project/ProjectFolder.h"
#include "platform/Files.h"
#include "support/Patience.h"
#include "support/WindowWaits.h"

#include <QtCore/QThread>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QTreeWidget>

using namespace Qt::StringLiterals;
using test::CurrentFile;

namespace {

/// The file system in force. When it is read on the window's thread while a progress window is there, the
/// user presses its button.
class CancellingFiles : public platform::FileSystemProxy
{
public:
    CancellingFiles() : FileSystemProxy(platform::Files()), m_installed(*this) {}

    std::optional<QByteArray> Read(const CString& path, CString* reason) override
    {
        const bool isWindowsThread = QThread::currentThread() == qApp->thread();
        if (QWidget* window = isWindowsThread ? QApplication::activeModalWidget() : nullptr) {
            if (m_text.isEmpty()) m_text = window->findChild<QLabel*>()->text();
            test::PressButton(*window, u"取消"_s);
        }
        return Target().Read(path, reason);
    }

    /// What the progress window said; empty when there was none.
    QString Text() const { return m_text; }

private:
    QString m_text;
    platform::ScopedFileSystem m_installed;
};

/// The window over a history with one copy of the current rule file, which has been changed since.
class HistoryOfFile : public test::EditorWindow
{
protected:
    HistoryOfFile()
    {
        m_window.OpenSample(Folder(u"project"_s));
        History().Keep(m_folder.Path(CurrentFile));
        m_messages.PresetAnswer(platform::Answer::Yes);
    }

    embedded::History History() const
    {
        return embedded::History(embedded::ProjectFolder(Folder(u"project"_s)));
    }
    qsizetype CountCopies() const { return History().List(m_folder.Path(CurrentFile)).size(); }
    editor::Project& Project() const { return *m_window.OpenedProject(); }
};

} // namespace

TEST_F(HistoryOfFile, RestoringGivesTheCopyBackAndKeepsWhatItReplaced)
{
    const QByteArray before = m_folder.ReadFile(CurrentFile);
    m_folder.WriteFile(CurrentFile, "<changed/>");
    editor::HistoryWindow window(nullptr, Project(), m_folder.Path(CurrentFile));
    EXPECT_EQ(test::ButtonsWithoutTip(window), QStringList());
    test::PressButton(window, u"还原"_s);
    EXPECT_TRUE(window.HasRestored());
    EXPECT_EQ(m_folder.ReadFile(CurrentFile), before);
    EXPECT_EQ(CountCopies(), 2);
}

TEST_F(HistoryOfFile, TextBehindADozenTabsIsInSight)
{
    const QByteArray before = m_folder.ReadFile(CurrentFile);
    m_folder.WriteFile(CurrentFile, before + "<!-- flat -->\n" + QByteArray(12, '\t') + "<!-- deep -->\n");
    editor::HistoryWindow window(nullptr, Project(), m_folder.Path(CurrentFile));
    window.show();
    window.findChild<QCheckBox*>()->setChecked(true);
    auto* view = window.findChild<QPlainTextEdit*>();
    const QTextCursor found = view->document()->find(u"deep"_s);
    ASSERT_FALSE(found.isNull());
    EXPECT_LT(view->cursorRect(found).right(), view->viewport()->width());
    EXPECT_GT(view->cursorRect(found).right(), view->viewport()->width() / 8); // and still indented
}

TEST_F(HistoryOfFile, CopyThatAnAidForTheDisabledSelectsIsRestored)
{
    const QByteArray first = m_folder.ReadFile(CurrentFile);
    m_folder.WriteFile(CurrentFile, first + "<!-- second -->\n");
    History().Keep(m_folder.Path(CurrentFile));
    editor::HistoryWindow window(nullptr, Project(), m_folder.Path(CurrentFile));
    auto& list = *window.findChild<QTreeWidget*>();
    ASSERT_EQ(list.topLevelItemCount(), 2);
    test::SelectByAid(list, list.model()->index(1, 0));
    test::WaitInLoopFor(u"the copy"_s, [&] { return list.currentIndex().row() == 1; });
    test::PressButton(window, u"还原"_s);
    EXPECT_EQ(m_folder.ReadFile(CurrentFile), first);
}

TEST_F(HistoryOfFile, RestoringALargeFileCanBeCancelledAndThenChangesNothing)
{
    const QByteArray large = "<!--" + QByteArray(9'000'000, ' ') + "-->";
    m_folder.WriteFile(CurrentFile, large);
    editor::HistoryWindow window(nullptr, Project(), m_folder.Path(CurrentFile));
    CancellingFiles files;
    test::PressButton(window, u"还原"_s);
    EXPECT_EQ(files.Text(), u"正在还原…"_s);
    EXPECT_FALSE(window.HasRestored());
    EXPECT_EQ(m_folder.ReadFile(CurrentFile), large);
    EXPECT_EQ(CountCopies(), 1);
}
