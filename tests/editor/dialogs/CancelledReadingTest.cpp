#include "editor/dialogs/HistoryWindow.h"

#include "editor/EditorFixture.h"
#include "editor/SampleFiles.h"
#include "editor/project/Project.h"
#include "embedded/data/history/History.h"
#include "embedded/data/project/ProjectFolder.h"
#include "platform/Files.h"

#include <QtCore/QSemaphore>
#include <QtCore/QThread>
#include <QtGui/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QStatusBar>

using namespace Qt::StringLiterals;
using test::CurrentFile;

namespace {

/// The file system in force, in which a thread beside the window's reads nothing before the user has pressed
/// 取消.
class WaitingFiles : public platform::FileSystemProxy
{
public:
    WaitingFiles() : FileSystemProxy(platform::Files()), m_installed(*this) {}
    ~WaitingFiles() override { m_go.release(Readings); }

    std::optional<QByteArray> Read(const CString& path, CString* reason) override
    {
        if (QThread::currentThread() != qApp->thread()) m_go.acquire();
        return Target().Read(path, reason);
    }

    /// What the user does in the progress window.
    test::NextWindows::Step Cancel()
    {
        return test::NextWindows::InProgress([this](QDialog& window) {
            m_text = window.findChild<QLabel*>()->text();
            test::PressButton(window, u"取消"_s);
            m_go.release(Readings);
        });
    }
    /// What the progress window said.
    QString Text() const { return m_text; }

private:
    static constexpr int Readings = 1000; ///< more than any step does

    QSemaphore m_go;
    QString m_text;
    platform::ScopedFileSystem m_installed;
};

/// The window on the sample project, whose user cancels what reads files.
class CancelledReading : public test::EditorWindow
{
protected:
    CancelledReading() { m_window.OpenSample(Folder(u"project"_s)); }

    static test::NextWindows::Step Close()
    {
        return [](QDialog& window) { window.close(); };
    }
    QString Told() const { return m_window.statusBar()->currentMessage(); }
};

} // namespace

TEST_F(CancelledReading, OfTheCurrentFileOpensNoConfigurationDialog)
{
    WaitingFiles files;
    const test::NextWindows user({files.Cancel(), Close()});
    m_window.Commands().configure->trigger();
    EXPECT_EQ(files.Text(), u"正在检查规则文件…"_s);
    EXPECT_FALSE(user.Done());
    EXPECT_EQ(Told(), u"已取消，文件没有变"_s);
}

TEST_F(CancelledReading, OfTheWizardsFileOpensNoWizard)
{
    WaitingFiles files;
    const test::NextWindows user({[](QDialog& window) { window.accept(); }, files.Cancel(), Close()});
    m_window.Commands().wizard->trigger();
    EXPECT_EQ(files.Text(), u"正在检查规则文件…"_s);
    EXPECT_FALSE(user.Done());
}

TEST_F(CancelledReading, OfTheFormerFileRefreshesNothing)
{
    WaitingFiles files;
    const test::NextWindows user({files.Cancel()});
    editor::ModuleSteps steps(&m_window, *m_window.OpenedProject());
    EXPECT_EQ(steps.Refresh(m_folder.Path(u"project\\app\\自动套配置\\给排水示例.xml"_s)),
              editor::StepEnd::Cancelled);
    EXPECT_TRUE(user.Done());
    EXPECT_EQ(m_window.OpenedProject()->CurrentRuleFile(), m_folder.Path(CurrentFile));
}

TEST_F(CancelledReading, OfAHistoryShowsNoDifference)
{
    embedded::History(embedded::ProjectFolder(Folder(u"project"_s))).Keep(m_folder.Path(CurrentFile));
    WaitingFiles files;
    const test::NextWindows user({files.Cancel()});
    const editor::HistoryWindow window(nullptr, *m_window.OpenedProject(), m_folder.Path(CurrentFile));
    EXPECT_TRUE(user.Done());
    EXPECT_EQ(files.Text(), u"正在比较…"_s);
    EXPECT_EQ(window.findChild<QPlainTextEdit*>()->toPlainText(), QString());
}
