#include "editor/window/ModuleSteps.h"

#include "editor/EditorFixture.h"
#include "editor/SampleFiles.h"
#include "embedded/data/history/History.h"
#include "embedded/data/project/ProjectFolder.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "presenter/CQdDeConfigPresenter.h"
#include "shared/RuleFileState.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QAction>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>

#include <type_traits>

using namespace Qt::StringLiterals;
using test::CurrentFile;
using ::testing::HasSubstr;

namespace {

const QByteArray Damaged = "<a>\n  <b x=\"1\" x=\"2\"/>\n</a>";

// Its runner works on it.
static_assert(!std::is_copy_constructible_v<editor::ModuleSteps> &&
              !std::is_move_constructible_v<editor::ModuleSteps>);

/// Notes which files are opened to be written.
class OpenedFiles : public platform::FileSystemProxy
{
public:
    OpenedFiles() : FileSystemProxy(platform::Files()), m_installed(*this) {}

    std::unique_ptr<platform::OutputFile> OpenForWriting(const CString& path) override
    {
        m_opened.append(path);
        return Target().OpenForWriting(path);
    }
    const CStringArray& Opened() const noexcept { return m_opened; }

private:
    CStringArray m_opened;
    platform::ScopedFileSystem m_installed;
};

/// The window on a project whose current rule file is the sample's.
class RuleFileSteps : public test::EditorWindow
{
protected:
    RuleFileSteps() { m_window.OpenSample(Folder(u"project"_s)); }

    void Damage()
    {
        m_folder.WriteFile(CurrentFile, Damaged);
        m_window.Commands().examine->trigger();
    }
    /// Gives what the file holds then.
    QByteArray WriteTwice()
    {
        QByteArray twice = m_folder.ReadFile(CurrentFile);
        twice.replace("</自动套清单定额配置信息>", "<again name=\"给排水\"/></自动套清单定额配置信息>");
        m_folder.WriteFile(CurrentFile, twice);
        return twice;
    }
    CArray<embedded::HistoryEntry> Copies() const
    {
        return embedded::History(embedded::ProjectFolder(Folder(u"project"_s)))
            .List(m_folder.Path(CurrentFile));
    }
};

} // namespace

TEST_F(RuleFileSteps, UnreadableFileIsReportedBeforeTheDialogAndStaysOnCancel)
{
    Damage();
    QString text;
    const test::NextWindows user({[&](QDialog& window) {
        text = static_cast<QMessageBox&>(window).text();
        test::PressButton(window, u"取消"_s);
    }});
    m_window.Commands().configure->trigger();
    ASSERT_TRUE(user.Done());
    EXPECT_THAT(text.toStdString(), HasSubstr("第 2 行第 "));
    EXPECT_EQ(m_folder.ReadFile(CurrentFile), Damaged);
}

TEST_F(RuleFileSteps, UnreadableFileOpenedAnywayHasACopyInTheHistory)
{
    Damage();
    const test::NextWindows user({[](QDialog& window) { test::PressButton(window, u"仍然打开"_s); },
                                  [](QDialog& window) { window.close(); }});
    m_window.Commands().configure->trigger();
    ASSERT_TRUE(user.Done());
    EXPECT_NE(m_folder.ReadFile(CurrentFile), Damaged);
    ASSERT_FALSE(Copies().isEmpty());
    embedded::History history(embedded::ProjectFolder(Folder(u"project"_s)));
    EXPECT_EQ(history.Read(Copies().last()), Damaged);
}

TEST_F(RuleFileSteps, FileThatTheDialogTurnsToIsKeptBeforeItIsWritten)
{
    const CString other = u"project\\app\\自动套配置\\电气示例.xml"_s;
    const QByteArray before = m_folder.ReadFile(other);
    CQdDeConfigPresenter presenter({});
    ASSERT_TRUE(presenter.ReLoad(m_folder.Path(other)));
    ASSERT_TRUE(presenter.Save());
    ASSERT_NE(m_folder.ReadFile(other), before);
    embedded::History history(embedded::ProjectFolder(Folder(u"project"_s)));
    const auto copies = history.List(m_folder.Path(other));
    ASSERT_FALSE(copies.isEmpty());
    EXPECT_EQ(history.Read(copies.last()), before);
}

TEST_F(RuleFileSteps, WhatAnotherProgramWroteMeanwhileIsKeptBeforeASave)
{
    CQdDeConfigPresenter presenter({});
    const QByteArray theirs = m_folder.ReadFile(CurrentFile) + "<!-- theirs -->\n";
    m_folder.WriteFile(CurrentFile, theirs);
    ASSERT_TRUE(presenter.Save());
    embedded::History history(embedded::ProjectFolder(Folder(u"project"_s)));
    ASSERT_FALSE(Copies().isEmpty());
    EXPECT_EQ(history.Read(Copies().last()), theirs);
}

TEST_F(RuleFileSteps, VersionOfTheSameSpecialtyThatASaveReplacesIsToldWithItsCopy)
{
    CQdDeConfigPresenter presenter({});
    const QByteArray theirs = m_folder.ReadFile(CurrentFile).replace("bDefault=\"0\"", "bDefault=\"1\"");
    ASSERT_NE(theirs, m_folder.ReadFile(CurrentFile));
    m_folder.WriteFile(CurrentFile, theirs);
    ASSERT_TRUE(presenter.Save());
    QCoreApplication::processEvents();
    ASSERT_EQ(m_messages.Texts().size(), 1);
    const QString text = m_messages.Texts()[0];
    const CString spec = m_window.OpenedProject()->Spec();
    EXPECT_THAT(text.toStdString(), HasSubstr("另一个程序也保存了专业“" + spec.toStdString() + "”的规则"));
    embedded::History history(embedded::ProjectFolder(Folder(u"project"_s)));
    CArray<QByteArray> told;
    for (const embedded::HistoryEntry& copy : Copies())
        if (text.contains(copy.id)) told.append(history.Read(copy));
    EXPECT_EQ(told, CArray<QByteArray>{theirs});
}

TEST_F(RuleFileSteps, AttributeFilesHaveNoCopies)
{
    m_window.Commands().attributes->trigger();
    m_window.Commands().attributes->trigger();
    EXPECT_TRUE(embedded::History(embedded::ProjectFolder(Folder(u"project"_s))).ListAll().isEmpty());
}

TEST_F(RuleFileSteps, HeadOnTheOriginalLeavesACopyInTheHistory)
{
    const QByteArray before = m_folder.ReadFile(CurrentFile);
    const test::NextWindows user({[](QDialog& window) { test::PressButton(window, u"写在这个文件上"_s); }});
    m_window.Commands().writeHead->trigger();
    ASSERT_TRUE(user.Done());
    EXPECT_EQ(shared::ExamineRuleFile(m_folder.Path(CurrentFile)).kind, shared::RuleFileKind::Wrapped);
    ASSERT_FALSE(Copies().isEmpty());
    EXPECT_EQ(embedded::History(embedded::ProjectFolder(Folder(u"project"_s))).Read(Copies().last()), before);
    EXPECT_FALSE(m_window.Commands().writeHead->isEnabled());
}

TEST_F(RuleFileSteps, HeadOnACopyKeepsWhatStoodThereWhateverItsName)
{
    m_folder.WriteFile(u"copy.dat"_s, "mine");
    const test::NextWindows user({[](QDialog& window) { test::PressButton(window, u"写在副本上"_s); },
                                  [&](QDialog& window) {
                                      window.findChild<QLineEdit*>()->setText(Folder(u"copy.dat"_s));
                                      // The question whether to replace the file comes within.
                                      QTimer::singleShot(0, &window, [&window] { window.accept(); });
                                  },
                                  [](QDialog& window) { test::PressButton(window, u"&Yes"_s); }});
    m_window.Commands().writeHead->trigger();
    ASSERT_TRUE(user.Done());
    EXPECT_EQ(shared::ExamineRuleFile(m_folder.Path(u"copy.dat"_s)).kind, shared::RuleFileKind::Wrapped);
    embedded::History history(embedded::ProjectFolder(Folder(u"project"_s)));
    const auto copies = history.List(m_folder.Path(u"copy.dat"_s));
    ASSERT_EQ(copies.size(), 1);
    EXPECT_EQ(history.Read(copies[0]), "mine");
}

TEST_F(RuleFileSteps, CopyThatIsNamedWithoutAnEndingIsAnXmlFile)
{
    const test::NextWindows user({[](QDialog& window) { test::PressButton(window, u"写在副本上"_s); },
                                  [&](QDialog& window) {
                                      window.findChild<QLineEdit*>()->setText(Folder(u"copy"_s));
                                      window.accept();
                                  }});
    m_window.Commands().writeHead->trigger();
    ASSERT_TRUE(user.Done());
    EXPECT_EQ(shared::ExamineRuleFile(m_folder.Path(u"copy.xml"_s)).kind, shared::RuleFileKind::Wrapped);
    EXPECT_FALSE(m_folder.Exists(u"copy"_s));
}

TEST_F(RuleFileSteps, HeadIsWrittenOnAFileOfTheLongestName)
{
    const CString name = u"project\\app\\自动套配置\\"_s + CString(251, u'x') + u".xml"_s;
    const CString longest = m_folder.WriteFile(name, m_folder.ReadFile(CurrentFile));
    const test::NextWindows user({[](QDialog& window) { test::PressButton(window, u"写在这个文件上"_s); }});
    editor::ModuleSteps steps(&m_window, *m_window.OpenedProject());
    EXPECT_EQ(steps.WriteHead(longest), editor::StepEnd::Done);
    EXPECT_EQ(shared::ExamineRuleFile(longest).kind, shared::RuleFileKind::Wrapped);
}

TEST_F(RuleFileSteps, HeadTouchesNoFileBesideItsTarget)
{
    const OpenedFiles files;
    const test::NextWindows user({[](QDialog& window) { test::PressButton(window, u"写在这个文件上"_s); }});
    m_window.Commands().writeHead->trigger();
    ASSERT_TRUE(user.Done());
    CStringArray opened = files.Opened();
    const CString path = m_folder.Path(CurrentFile);
    EXPECT_TRUE(opened.contains(path));
    opened.removeIf([&](const CString& file) {
        return file == path || platform::FolderOf(file) != platform::FolderOf(path);
    });
    EXPECT_EQ(opened, CStringArray());
}

TEST_F(RuleFileSteps, HeadIsNotWrittenWhenTheUserCancels)
{
    const QByteArray before = m_folder.ReadFile(CurrentFile);
    const test::NextWindows user({[](QDialog& window) { test::PressButton(window, u"取消"_s); }});
    m_window.Commands().writeHead->trigger();
    ASSERT_TRUE(user.Done());
    EXPECT_EQ(m_folder.ReadFile(CurrentFile), before);
}

TEST_F(RuleFileSteps, RefreshMakesTheSelectedFileTheCurrentOne)
{
    m_folder.WriteFile(u"project\\app\\自动套配置\\second.xml"_s, m_folder.ReadFile(CurrentFile));
    editor::ModuleSteps steps(&m_window, *m_window.OpenedProject());
    EXPECT_EQ(steps.Refresh(m_folder.Path(u"project\\app\\自动套配置\\second.xml"_s)), editor::StepEnd::Done);
    EXPECT_EQ(m_window.OpenedProject()->CurrentRuleFile(),
              m_folder.Path(u"project\\app\\自动套配置\\second.xml"_s));
}

TEST_F(RuleFileSteps, RefusedRefreshTellsTheReasonAndKeepsTheCurrentFile)
{
    const CString bad = m_folder.WriteFile(u"project\\app\\自动套配置\\bad.xml"_s, Damaged);
    editor::ModuleSteps steps(&m_window, *m_window.OpenedProject());
    EXPECT_EQ(steps.Refresh(bad), editor::StepEnd::Refused);
    ASSERT_EQ(m_messages.Texts().size(), 1);
    EXPECT_THAT(m_messages.Texts()[0].toStdString(), HasSubstr("文件功能不匹配"));
    EXPECT_THAT(m_messages.Texts()[0].toStdString(), HasSubstr("第 2 行第 "));
    EXPECT_EQ(m_window.OpenedProject()->CurrentRuleFile(), m_folder.Path(CurrentFile));
}

TEST_F(RuleFileSteps, SpecialtyThatStandsTwiceIsLeftOnceAfterAQuestion)
{
    const QByteArray twice = WriteTwice();
    m_messages.PresetAnswer(platform::Answer::Yes);
    const test::NextWindows user({[](QDialog& window) { window.close(); }});
    m_window.Commands().configure->trigger();
    ASSERT_TRUE(user.Done());
    EXPECT_FALSE(m_folder.ReadFile(CurrentFile).contains("<again"));
    embedded::History history(embedded::ProjectFolder(Folder(u"project"_s)));
    ASSERT_FALSE(Copies().isEmpty());
    EXPECT_EQ(history.Read(Copies().last()), twice);
}

TEST_F(RuleFileSteps, WorkbenchOffersOnceToMendASpecialtyThatStandsTwiceAndOpensTheFile)
{
    const QByteArray twice = WriteTwice();
    ASSERT_TRUE(m_window.OpenProject(Folder(u"project"_s)));
    EXPECT_FALSE(m_window.Session().IsOpen()) << "the user did not want it";
    EXPECT_EQ(m_messages.Texts().size(), 1);
    EXPECT_EQ(m_folder.ReadFile(CurrentFile), twice);
    m_window.Commands().configure->trigger(); // which asks the same
    EXPECT_EQ(m_messages.Texts().size(), 2) << "and the workbench not once more";
    m_messages.PresetAnswer(platform::Answer::Yes);
    ASSERT_TRUE(m_window.OpenProject(Folder(u"project"_s)));
    EXPECT_EQ(m_messages.Texts().size(), 3);
    EXPECT_TRUE(m_window.Session().IsOpen());
    EXPECT_FALSE(m_folder.ReadFile(CurrentFile).contains("<again"));
    embedded::History history(embedded::ProjectFolder(Folder(u"project"_s)));
    ASSERT_FALSE(Copies().isEmpty());
    EXPECT_EQ(history.Read(Copies().last()), twice);
}
