#include "editor/steps/FileWait.h"

#include "dialogs/AutoConfigIds.h"
#include "editor/EditorFixture.h"
#include "editor/SampleFiles.h"
#include "editor/project/Project.h"
#include "editor/window/ModuleSteps.h"
#include "embedded/data/project/ProjectFolder.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QLockFile>
#include <QtGui/QAction>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QStatusBar>

#include <functional>
#include <optional>

using namespace Qt::StringLiterals;
using test::CurrentFile;
using ::testing::HasSubstr;

namespace {

/// The editor on the sample project, whose rule file another program may hold for as long as it likes.
class HeldRuleFile : public test::EditorWindow
{
protected:
    HeldRuleFile()
    {
        qputenv("KTQDDE_LOCK_WAIT", "3600");
        m_window.OpenSample(Folder(u"project"_s));
    }
    ~HeldRuleFile() override { qunsetenv("KTQDDE_LOCK_WAIT"); }

    void Hold()
    {
        QString name;
        const QDir marks(Folder(u"project\\history\\locks"_s));
        {
            const embedded::RuleFileLock own(embedded::ProjectFolder(Folder(u"project"_s)),
                                             {m_folder.Path(CurrentFile)});
            name = marks.entryList({u"*.lock"_s}, QDir::Files).value(0);
        }
        m_other.emplace(marks.filePath(name));
        ASSERT_TRUE(m_other->tryLock());
    }
    void Release() { m_other.reset(); }

    /// The user in the window that says what is waited for.
    test::NextWindows::Step Waiting(const std::function<void(QDialog&)>& then)
    {
        return test::NextWindows::InProgress([this, then](QDialog& window) {
            QString texts;
            for (const QLabel* label : window.findChildren<QLabel*>())
                if (label->isVisible()) texts += label->text().remove(QChar(0x200B)) + u'\n';
            EXPECT_THAT(texts.toStdString(), HasSubstr("DefaultConfig.xml"));
            EXPECT_THAT(
                texts.toStdString(),
                HasSubstr("（进程 " + std::to_string(QCoreApplication::applicationPid()) + "，机器 "));
            then(window);
        });
    }
    test::NextWindows::Step BreakOff()
    {
        return Waiting([](QDialog& window) { test::PressButton(window, u"取消"_s); });
    }
    static void AddRule(const QDialog& dialog)
    {
        dialog.findChild<QAbstractButton*>(u"id%1"_s.arg(int(dialogs::autoconfig::AddRuleButton)))->click();
    }

private:
    std::optional<QLockFile> m_other;
};

} // namespace

TEST_F(HeldRuleFile, OpeningWaitsUnderAWindowAndGoesOnWhenTheFileIsFree)
{
    Hold();
    const test::NextWindows user({Waiting([this](QDialog&) { Release(); }), [](QDialog& window) {
                                      EXPECT_NE(window.findChild<QWidget*>(u"id1008"_s), nullptr);
                                      window.close();
                                  }});
    m_window.Commands().configure->trigger();
    EXPECT_TRUE(user.Done());
    EXPECT_EQ(m_messages.Texts(), QStringList());
}

TEST_F(HeldRuleFile, WaitBeforeOpeningThatIsBrokenOffChangesNothing)
{
    const QByteArray before = m_folder.ReadFile(CurrentFile);
    Hold();
    {
        const test::NextWindows user({BreakOff()});
        m_window.Commands().configure->trigger();
        EXPECT_TRUE(user.Done());
    }
    EXPECT_EQ(m_window.statusBar()->currentMessage(), u"已取消，文件没有变"_s);
    for (const auto& step :
         {std::function([](editor::ModuleSteps&s, const CString&file) { return s.Refresh(file); }),
          std::function([](editor::ModuleSteps&s, const CString&file) {
              return s.RunWizard(s.ProposedStart(file)) ? editor::StepEnd::Done : editor::StepEnd::Cancelled;
          })}) {
        const test::NextWindows user({BreakOff()});
        editor::ModuleSteps steps(&m_window, *m_window.OpenedProject());
        EXPECT_EQ(step(steps, m_folder.Path(CurrentFile)), editor::StepEnd::Cancelled);
        EXPECT_TRUE(user.Done());
    }
    EXPECT_EQ(m_messages.Texts(), QStringList());
    EXPECT_EQ(m_folder.ReadFile(CurrentFile), before);
}

TEST_F(HeldRuleFile, DialogWaitsUnderAWindowForItsSaveAndKeepsItsEditsWhenThatIsBrokenOff)
{
    const QByteArray before = m_folder.ReadFile(CurrentFile);
    const test::NextWindows user({[this](QDialog& dialog) {
                                      AddRule(dialog);
                                      Hold();
                                      QTimer::singleShot(0, &dialog, [&dialog] { dialog.close(); });
                                  },
                                  BreakOff(),
                                  // The dialog is seen without the window before the box is.
                                  test::NextWindows::InBox([](QMessageBox& box) {
                                      EXPECT_THAT(box.text().toStdString(), HasSubstr("没有再等"));
                                      test::PressButton(box, u"确定"_s);
                                  }),
                                  [&](QDialog& dialog) {
                                      EXPECT_TRUE(dialog.isVisible());
                                      EXPECT_EQ(m_folder.ReadFile(CurrentFile), before);
                                      Release();
                                      dialog.close();
                                  }});
    m_window.Commands().configure->trigger();
    EXPECT_TRUE(user.Done());
    EXPECT_NE(m_folder.ReadFile(CurrentFile), before);
}

TEST_F(HeldRuleFile, HeadIsNotWrittenWhenItsWaitIsBrokenOff)
{
    const QByteArray before = m_folder.ReadFile(CurrentFile);
    Hold();
    const test::NextWindows user(
        {[](QDialog& window) { test::PressButton(window, u"写在这个文件上"_s); }, BreakOff()});
    editor::ModuleSteps steps(&m_window, *m_window.OpenedProject());
    EXPECT_EQ(steps.WriteHead(m_folder.Path(CurrentFile)), editor::StepEnd::Cancelled);
    EXPECT_TRUE(user.Done());
    EXPECT_EQ(m_folder.ReadFile(CurrentFile), before);
}
