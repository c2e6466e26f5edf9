#include "editor/EditorFixture.h"

#include "editor/SampleFiles.h"
#include "editor/files/FilePanel.h"
#include "editor/project/Project.h"
#include "editor/window/ProjectPanel.h"
#include "editor/workbench/CategoryPanel.h"
#include "platform/Files.h"
#include "shared/RuleFileState.h"
#include "support/WindowWaits.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtGui/QAction>
#include <QtGui/QWheelEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QTreeWidget>

#include <memory>
#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;
using test::CurrentFile;
using test::OtherFile;
using ::testing::HasSubstr;

namespace {

/// The file system in force. Once a file is opened for writing, it is torn and the disk is full.
class ThrowingFiles : public platform::FileSystemProxy
{
public:
    explicit ThrowingFiles(CString path)
        : FileSystemProxy(platform::Files()), m_path(std::move(path)), m_installed(*this)
    {
    }

    std::optional<QByteArray> Read(const CString& path, CString* reason) override
    {
        if (m_isTorn && path == m_path) return "<torn";
        return Target().Read(path, reason);
    }
    std::unique_ptr<platform::OutputFile> OpenForWriting(const CString&) override
    {
        m_isTorn = true;
        throw std::runtime_error("disk full");
    }

private:
    CString m_path;
    bool m_isTorn = false;
    platform::ScopedFileSystem m_installed;
};

/// The window on the sample project, driven by keys and commands.
class MainWindowSteps : public test::EditorWindow
{
protected:
    MainWindowSteps()
    {
        m_window.OpenSample(Folder(u"project"_s));
        m_window.activateWindow();
        test::WaitUntilActive(m_window);
    }

    editor::Project& Project() const { return *m_window.OpenedProject(); }
    QString Told() const { return m_window.statusBar()->currentMessage(); }
    void Press(Qt::Key key) { QTest::keyClick(&m_window, key); }
    QTreeWidget& List() const { return *test::PartOf<editor::FilePanel>(m_window).findChild<QTreeWidget*>(); }
    static CString State(const QTreeWidgetItem& file) { return file.text(2); }
    void Select(const CString& configuration) const
    {
        List().setCurrentItem(List().findItems(configuration, Qt::MatchStartsWith).value(0));
    }
    QString Native(const CString& name) const { return QDir::toNativeSeparators(Folder(name)); }
};

} // namespace

TEST_F(MainWindowSteps, RefreshKeyMakesTheSelectedFileTheCurrentOneAndNamesIt)
{
    Select(u"给排水示例"_s);
    Press(Qt::Key_F5);
    EXPECT_EQ(Told(), u"已设为当前配置："_s + Native(OtherFile));
    EXPECT_EQ(Project().CurrentRuleFile(), m_folder.Path(OtherFile));
    EXPECT_EQ(List().topLevelItem(0)->text(0), u"给排水示例（当前配置）"_s);
    EXPECT_EQ(m_messages.Texts(), QStringList());
}

TEST_F(MainWindowSteps, RefreshByAFileThatTheUserChoosesNamesIt)
{
    const test::NextWindows user({[&](QDialog& window) {
        window.findChild<QLineEdit*>()->setText(Folder(OtherFile));
        window.accept();
    }});
    m_window.Commands().refreshOther->trigger();
    ASSERT_TRUE(user.Done());
    EXPECT_EQ(Told(), u"已设为当前配置："_s + Native(OtherFile));
    EXPECT_EQ(Project().CurrentRuleFile(), m_folder.Path(OtherFile));
}

// A project remembers the name alone, and finds it among its own rule files.
TEST_F(MainWindowSteps, RefreshByAFileOutsideTellsWhichFileIsCurrentInstead)
{
    m_folder.WriteFile(u"给排水示例.xml"_s, m_folder.ReadFile(CurrentFile));
    const test::NextWindows user({[&](QDialog& window) {
        window.findChild<QLineEdit*>()->setText(Folder(u"给排水示例.xml"_s));
        window.accept();
    }});
    m_window.Commands().refreshOther->trigger();
    ASSERT_TRUE(user.Done());
    EXPECT_EQ(Told(), u"已设为当前配置："_s + Native(OtherFile));
    ASSERT_EQ(m_messages.Texts().size(), 1);
    EXPECT_THAT(m_messages.Texts()[0].toStdString(), HasSubstr(Native(u"给排水示例.xml"_s).toStdString()));
    EXPECT_THAT(m_messages.Texts()[0].toStdString(),
                HasSubstr((Native(OtherFile) + u"（可用）"_s).toStdString()));
}

TEST_F(MainWindowSteps, PanelShowsWhatARefreshHasWrittenBeforeItRaised)
{
    ASSERT_EQ(State(*List().topLevelItem(0)), u"可用"_s);
    ThrowingFiles files(m_folder.Path(CurrentFile));
    Select(u"给排水示例"_s);
    m_window.Commands().refresh->trigger();
    ASSERT_FALSE(m_messages.Texts().isEmpty());
    EXPECT_TRUE(State(*List().topLevelItem(0)).startsWith(u"读不了"_s));
}

TEST_F(MainWindowSteps, CommandsAndClosingWaitUntilTheCommandBeforeHasEnded)
{
    const test::NextWindows user({[&](QDialog& window) {
        m_window.Commands().closeProject->trigger();
        EXPECT_NE(m_window.OpenedProject(), nullptr);
        EXPECT_FALSE(m_window.OpenProject(Folder(u"project"_s)));
        EXPECT_FALSE(m_window.close());
        window.reject();
    }});
    m_window.Commands().wizard->trigger();
    ASSERT_TRUE(user.Done());
    m_window.Commands().closeProject->trigger();
    EXPECT_EQ(m_window.OpenedProject(), nullptr);
    EXPECT_TRUE(m_window.close());
}

TEST_F(MainWindowSteps, WheelOverASettingChangesNothing)
{
    QList<QComboBox*> settings = test::PartOf<editor::ProjectPanel>(m_window).findChildren<QComboBox*>();
    settings += test::PartOf<editor::CategoryPanel>(m_window).findChildren<QComboBox*>();
    ASSERT_EQ(settings.size(), 5);
    for (QComboBox* combo : settings) {
        const int chosen = combo->currentIndex();
        for (const int turn : {-120, 120}) {
            QWheelEvent wheel(QPointF(1, 1), combo->mapToGlobal(QPointF(1, 1)), QPoint(), QPoint(0, turn),
                              Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(combo, &wheel);
            EXPECT_EQ(combo->currentIndex(), chosen) << combo->currentText().toStdString();
        }
    }
}

TEST_F(MainWindowSteps, TableIsNotExportedOverARuleFile)
{
    const QByteArray before = m_folder.ReadFile(CurrentFile);
    const test::NextWindows user({[&](QDialog& window) {
        window.findChild<QLineEdit*>()->setText(Folder(CurrentFile));
        test::PressButton(window, u"导出"_s);
    }});
    m_window.Commands().exportData->trigger();
    ASSERT_TRUE(user.Done());
    ASSERT_EQ(m_messages.Texts().size(), 1);
    EXPECT_THAT(m_messages.Texts()[0].toStdString(), HasSubstr("不能导出到 .xml 文件"));
    EXPECT_EQ(m_folder.ReadFile(CurrentFile), before);
}

TEST_F(MainWindowSteps, AttributeKeyRebuildsTheAttributeConfiguration)
{
    ASSERT_TRUE(QFile::remove(m_folder.Native(u"project\\app\\AttrConfig.xml"_s)));
    Press(Qt::Key_F6);
    EXPECT_EQ(Told(), u"已重建属性配置文件"_s);
    EXPECT_TRUE(m_folder.Exists(u"project\\app\\AttrConfig.xml"_s));
}

TEST_F(MainWindowSteps, HeadKeyFinishesTheSelectedFile)
{
    Select(u"给排水示例"_s);
    const test::NextWindows user({[](QDialog& window) { test::PressButton(window, u"写在这个文件上"_s); }});
    Press(Qt::Key_F7);
    ASSERT_TRUE(user.Done());
    EXPECT_EQ(Told(), u"已写文件头"_s);
    EXPECT_EQ(shared::ExamineRuleFile(m_folder.Path(OtherFile)).kind, shared::RuleFileKind::Wrapped);
    EXPECT_EQ(shared::ExamineRuleFile(m_folder.Path(CurrentFile)).kind, shared::RuleFileKind::Rules);
}
