#include "editor/EditorFixture.h"

#include "editor/files/FilesFixture.h"
#include "editor/project/Project.h"
#include "editor/window/ProjectPanel.h"
#include "editor/workbench/RuleTable.h"
#include "editor/workbench/Workbench.h"
#include "embedded/data/engine/Error.h"
#include "shared/RuleFileState.h"
#include "support/Patience.h"
#include "support/Watching.h"
#include "support/WindowWaits.h"

#include <QtCore/QDir>
#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QAction>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QDropEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenu>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QTreeWidget>

using namespace Qt::StringLiterals;
namespace {

/// The file system in force, but one folder cannot be listed.
class BrokenFolder : public platform::FileSystemProxy
{
public:
    explicit BrokenFolder(CString folder)
        : FileSystemProxy(platform::Files()), m_folder(std::move(folder)), m_installed(*this)
    {
    }

    CStringArray FindFiles(const CString& folder, const CString& extension) override
    {
        if (folder != m_folder) return Target().FindFiles(folder, extension);
        m_wasAsked = true;
        throw platform::FileError(folder, u"磁盘坏了"_s);
    }
    bool WasAsked() const noexcept { return m_wasAsked; }

private:
    CString m_folder;
    bool m_wasAsked = false;
    platform::ScopedFileSystem m_installed;
};

class EditorWindow : public test::EditorWindow
{
protected:
    /// What the window says of other programs; empty when it says nothing.
    QString Others() const
    {
        for (const QLabel* label : m_window.statusBar()->findChildren<QLabel*>())
            if (label->isVisible() && label->text().contains(u"另一个程序"_s)) return label->text();
        return {};
    }
};

} // namespace

TEST_F(EditorWindow, WithoutProjectOffersOnlyTheWaysToOne)
{
    const editor::Actions& actions = m_window.Commands();
    for (const QAction* action :
         {actions.newProject, actions.openProject, actions.sampleProject, actions.quit})
        EXPECT_TRUE(action->isEnabled()) << action->text().toStdString();
    for (const QAction* action :
         {actions.configure, actions.wizard, actions.refresh, actions.attributes, actions.writeHead,
          actions.history, actions.importData, actions.closeProject})
        EXPECT_FALSE(action->isEnabled()) << action->text().toStdString();
}

TEST_F(EditorWindow, MissingRuleFileCanBeConfiguredButNotRefreshed)
{
    ASSERT_TRUE(m_window.OpenProject(MakeProject(u"project"_s)));
    const editor::Actions& actions = m_window.Commands();
    EXPECT_TRUE(actions.configure->isEnabled());
    EXPECT_TRUE(actions.history->isEnabled());
    EXPECT_FALSE(actions.refresh->isEnabled());
    EXPECT_FALSE(actions.writeHead->isEnabled());
}

TEST_F(EditorWindow, UnreadableRuleFileTakesNoHead)
{
    const QString folder = MakeProject(u"project"_s);
    m_folder.MakeFolder(u"project\\app\\自动套配置"_s);
    m_folder.WriteFile(u"project\\app\\自动套配置\\DefaultConfig.xml"_s, "<broken");
    ASSERT_TRUE(m_window.OpenProject(folder));
    EXPECT_TRUE(m_window.Commands().refresh->isEnabled());
    EXPECT_FALSE(m_window.Commands().writeHead->isEnabled());
}

TEST_F(EditorWindow, SampleProjectIsMadeAtFirstUseAndOpenedAtTheNext)
{
    ASSERT_TRUE(m_window.OpenSample(Folder(u"deep\\sample"_s)));
    const CStringArray files = m_window.OpenedProject()->RuleFiles();
    ASSERT_EQ(files.size(), 4);
    for (const CString& file : files)
        EXPECT_TRUE(shared::ExamineRuleFile(file).IsSafe()) << file.toStdString();
    EXPECT_TRUE(m_window.Commands().writeHead->isEnabled());
    m_window.OpenedProject()->SetMode(SQdDeInfo::QuotaMode);
    ASSERT_TRUE(m_window.OpenSample(Folder(u"deep\\sample"_s)));
    EXPECT_EQ(m_window.OpenedProject()->Mode(), SQdDeInfo::QuotaMode);
}

TEST_F(EditorWindow, ProjectThatCannotBeOpenedIsReportedAndTheFormerStays)
{
    const QString folder = MakeProject(u"project"_s);
    ASSERT_TRUE(m_window.OpenProject(folder));
    EXPECT_FALSE(m_window.OpenProject(Folder(u"nothing"_s)));
    EXPECT_EQ(m_messages.Texts().size(), 1);
    ASSERT_NE(m_window.OpenedProject(), nullptr);
    EXPECT_EQ(m_window.OpenedProject()->Folder(), folder);
}

TEST_F(EditorWindow, ProjectWhoseOpeningFailsInTheMiddleIsNotHalfOpen)
{
    const QString folder = MakeProject(u"project"_s);
    {
        BrokenFolder files(m_folder.Path(u"project\\app\\自动套配置"_s));
        EXPECT_FALSE(m_window.OpenProject(folder));
        EXPECT_TRUE(files.WasAsked());
    }
    ASSERT_EQ(m_messages.Texts().size(), 1);
    EXPECT_EQ(m_window.OpenedProject(), nullptr);
    EXPECT_FALSE(m_window.Session().IsOpen());
    EXPECT_EQ(m_window.Session().OpenedProject(), nullptr);
    EXPECT_FALSE(m_window.Commands().configure->isEnabled());
    EXPECT_FALSE(m_window.windowTitle().contains(u" - "_s));
    EXPECT_FALSE(m_window.Bench().isVisible());
    ASSERT_TRUE(m_window.OpenProject(folder));
    EXPECT_EQ(m_window.OpenedProject()->Folder(), folder);
}

TEST_F(EditorWindow, OtherProgramWithTheProjectIsNamedForAsLongAsItHasItOpen)
{
    if (test::WatchingHere() == test::Watching::Nothing) GTEST_SKIP() << test::NoWatching;
    const QString folder = MakeProject(u"project"_s);
    ASSERT_TRUE(m_window.OpenProject(folder));
    EXPECT_EQ(Others(), QString());
    test::ProjectHolder other(embedded::ProjectFolder{folder});
    test::WaitInLoopFor(u"the other program"_s, [&] { return !Others().isEmpty(); });
    EXPECT_TRUE(Others().contains(u"进程 %1"_s.arg(other.Process()))) << Others().toStdString();
    other.End();
    test::WaitInLoopFor(u"its end"_s, [&] { return Others().isEmpty(); });
    test::ProjectHolder dying(embedded::ProjectFolder{folder});
    test::WaitInLoopFor(u"the next program"_s, [&] { return !Others().isEmpty(); });
    dying.Kill();
    m_window.activateWindow();
    test::WaitUntilActive(m_window);
    QEvent activated(QEvent::ActivationChange);
    QApplication::sendEvent(&m_window, &activated);
    EXPECT_EQ(Others(), QString());
}

TEST_F(EditorWindow, ProjectWhoseCurrentConfigurationLeavesTheRuleFolderIsNotOpened)
{
    const QByteArray leaving = "[QdDeConfigInfo]\r\nConfigName=..\\..\\victim\r\n";
    const QString folder = MakeProject(u"project"_s);
    ASSERT_TRUE(m_window.OpenProject(folder));
    MakeProject(u"second"_s);
    m_folder.WriteFile(u"second\\SysRegedit.ini"_s, leaving);
    EXPECT_FALSE(m_window.OpenProject(Folder(u"second"_s)));
    ASSERT_EQ(m_messages.Texts().size(), 1);
    EXPECT_THAT(m_messages.Texts()[0].toStdString(), ::testing::HasSubstr("不能用作配置名"));
    EXPECT_EQ(m_window.OpenedProject()->Folder(), folder);
    EXPECT_FALSE(m_folder.Exists(u"second\\victim.xml"_s));
    EXPECT_FALSE(m_folder.Exists(u"victim.xml"_s));
    m_folder.WriteFile(u"project\\SysRegedit.ini"_s, leaving); // under the open project
    EXPECT_THROW(m_window.OpenedProject()->CurrentRuleFile(), embedded::Error);
}

TEST_F(EditorWindow, NameThatTheIniDoesNotGiveBackWholeIsToldAtOpening)
{
    const QString folder = MakeProject(u"project"_s);
    m_folder.WriteFile(u"project\\SysRegedit.ini"_s,
                       "[QdDeConfigInfo]\nConfigName=" + QByteArray(120, 'x') + "\n");
    ASSERT_TRUE(m_window.OpenProject(folder));
    ASSERT_EQ(m_messages.Texts().size(), 1);
    EXPECT_THAT(m_messages.Texts()[0].toStdString(), ::testing::HasSubstr("只读得回前面的"));
}

TEST_F(EditorWindow, RefusedNewProjectComesBackWithWhatWasEntered)
{
    MakeProject(u"taken"_s);
    QString shown;
    const test::NextWindows user({[&](QDialog& window) {
                                      window.findChild<QLineEdit*>()->setText(Folder(u"taken"_s));
                                      test::PressButton(window, u"新建"_s);
                                  },
                                  [&](QDialog& window) {
                                      shown = window.findChild<QLineEdit*>()->text();
                                      window.findChild<QLineEdit*>()->setText(Folder(u"free"_s));
                                      test::PressButton(window, u"新建"_s);
                                  }});
    m_window.Commands().newProject->trigger();
    EXPECT_TRUE(user.Done());
    EXPECT_EQ(m_messages.Texts().size(), 1);
    EXPECT_EQ(shown, QDir::toNativeSeparators(Folder(u"taken"_s)));
    ASSERT_NE(m_window.OpenedProject(), nullptr);
    EXPECT_EQ(m_window.OpenedProject()->Folder(), Folder(u"free"_s));
}

TEST_F(EditorWindow, NewProjectDialogMakesAndOpensAProject)
{
    const test::NextWindows user({[&](QDialog& window) {
        window.findChild<QLineEdit*>()->setText(Folder(u"mine"_s));
        window.findChildren<QComboBox*>()[0]->setCurrentIndex(1);
        window.findChildren<QComboBox*>()[1]->setCurrentText(u"电气"_s);
        test::PressButton(window, u"新建"_s);
    }});
    m_window.Commands().newProject->trigger();
    ASSERT_TRUE(user.Done());
    EXPECT_TRUE(m_folder.Exists(u"mine\\app\\AttrConfig.xml"_s)) << "ranges would be open everywhere";
    ASSERT_NE(m_window.OpenedProject(), nullptr);
    EXPECT_EQ(m_window.OpenedProject()->Mode(), SQdDeInfo::QuotaMode);
    EXPECT_EQ(m_window.OpenedProject()->Spec(), u"电气"_s);
    EXPECT_EQ(Recent().Last(), Folder(u"mine"_s));
}

TEST_F(EditorWindow, ChosenModeAndSpecialtyAreStoredInTheProject)
{
    const QString folder = MakeProject(u"project"_s);
    ASSERT_TRUE(m_window.OpenProject(folder));
    for (QComboBox* combo : test::PartOf<editor::ProjectPanel>(m_window).findChildren<QComboBox*>())
        combo->setCurrentText(combo->findText(u"电气"_s) < 0 ? u"定额模式"_s : u"电气"_s);
    editor::Project reopened(folder);
    EXPECT_EQ(reopened.Mode(), SQdDeInfo::QuotaMode);
    EXPECT_EQ(reopened.Spec(), u"电气"_s);
}

TEST_F(EditorWindow, VanishedProjectIsListedButCannotBeChosen)
{
    const QString folder = MakeProject(u"project"_s);
    ASSERT_TRUE(m_window.OpenProject(folder));
    m_window.Commands().closeProject->trigger();
    ASSERT_TRUE(QDir(folder).removeRecursively());
    QMenu& menu = *m_window.Commands().recentProjects;
    emit menu.aboutToShow();
    EXPECT_FALSE(menu.actions()[0]->isEnabled());
    EXPECT_FALSE(m_window.findChild<QListWidget*>()->item(0)->flags().testFlag(Qt::ItemIsEnabled));
    menu.actions().last()->trigger();
    EXPECT_TRUE(Recent().Entries().isEmpty());
}

TEST_F(EditorWindow, EmptyListOfRecentProjectsTellsWhatItIsForAndOpensNothing)
{
    const auto& list = *m_window.findChild<QListWidget*>();
    ASSERT_EQ(list.count(), 1);
    EXPECT_FALSE(list.item(0)->text().isEmpty());
    EXPECT_EQ(list.item(0)->flags(), Qt::NoItemFlags);
    ASSERT_TRUE(m_window.OpenProject(MakeProject(u"project"_s)));
    ASSERT_EQ(list.count(), 1);
    EXPECT_TRUE(list.item(0)->flags().testFlag(Qt::ItemIsEnabled));
}

TEST_F(EditorWindow, OpenedProjectHasTheFocusOnItsRules)
{
    m_window.activateWindow();
    ASSERT_TRUE(m_window.OpenProject(MakeProject(u"project"_s)));
    EXPECT_EQ(m_window.focusWidget(), &test::PartOf<editor::RuleTable>(m_window));
}

TEST_F(EditorWindow, FolderDroppedOnTheWindowIsOpened)
{
    const QString folder = MakeProject(u"project"_s);
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(folder)});
    QDragEnterEvent enter({}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&m_window, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&m_window, &drop);
    ASSERT_NE(m_window.OpenedProject(), nullptr);
    EXPECT_EQ(m_window.OpenedProject()->Folder(), folder);
}
