#include "editor/steps/BusyCursor.h"

#include "editor/EditorFixture.h"
#include "platform/Files.h"

#include <QtCore/QThread>
#include <QtGui/QAction>
#include <QtWidgets/QApplication>

using namespace Qt::StringLiterals;

namespace {

bool IsBusy()
{
    return QApplication::overrideCursor() != nullptr;
}

/// The file system in force, which looks at the cursor when the window's thread reads a rule file.
class FilesUnderCursor : public platform::FileSystemProxy
{
public:
    FilesUnderCursor() : FileSystemProxy(platform::Files()), m_installed(*this) {}

    std::optional<QByteArray> Read(const CString& path, CString* reason) override
    {
        if (path.endsWith(u".xml"_s) && QThread::currentThread() == qApp->thread())
            wasBusy = wasBusy || IsBusy();
        return Target().Read(path, reason);
    }

    bool wasBusy = false; ///< at any of the readings

private:
    platform::ScopedFileSystem m_installed;
};

/// The window on the sample project.
class CursorOfDialogs : public test::EditorWindow
{
protected:
    CursorOfDialogs() { m_window.OpenSample(Folder(u"project"_s)); }
};

} // namespace

TEST(BusyUntilWindow, CursorIsBusyUntilAWindowComesUp)
{
    QWidget former;
    former.show();
    QWidget part(&former);
    QWidget window;
    const editor::BusyUntilWindow busy;
    EXPECT_TRUE(IsBusy());
    part.show();
    EXPECT_TRUE(IsBusy());
    window.show();
    EXPECT_FALSE(IsBusy());
}

TEST(BusyUntilWindow, CursorIsBackWhenNoWindowCameUp)
{
    {
        const editor::BusyUntilWindow busy;
    }
    EXPECT_FALSE(IsBusy());
}

TEST_F(CursorOfDialogs, IsBusyWhileTheConfigurationIsReadAndFreeWhenItsDialogIsThere)
{
    FilesUnderCursor files;
    const test::NextWindows user({[](QDialog& window) {
        EXPECT_FALSE(IsBusy());
        window.close();
    }});
    m_window.Commands().configure->trigger();
    ASSERT_TRUE(user.Done());
    EXPECT_TRUE(files.wasBusy);
}

TEST_F(CursorOfDialogs, IsBusyWhileTheWizardReadsAndFreeWhenItIsThere)
{
    FilesUnderCursor files;
    const test::NextWindows user({[](QDialog& window) { window.accept(); },
                                  [](QDialog& window) {
                                      EXPECT_FALSE(IsBusy());
                                      window.close();
                                  }});
    m_window.Commands().wizard->trigger();
    ASSERT_TRUE(user.Done());
    EXPECT_TRUE(files.wasBusy);
}
