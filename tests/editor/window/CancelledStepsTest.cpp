#include "editor/window/ModuleSteps.h"

#include "editor/EditorFixture.h"
#include "editor/SampleFiles.h"
#include "editor/messages/ErrorBox.h"
#include "editor/steps/StepWatch.h"
#include "embedded/data/engine/Progress.h"
#include "shared/RuleFileState.h"
#include "store/WrappedFile.h"
#include "support/FaultyFileSystem.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtWidgets/QLineEdit>

#include <map>

using namespace Qt::StringLiterals;
using editor::StepEnd;
using test::CurrentFile;
using test::OtherFile;

namespace {

/// The steps of the module, cancelled at any of the pieces of work at which they can be left.
class CancelledSteps : public test::EditorWindow
{
protected:
    using Step = std::function<StepEnd(editor::ModuleSteps&)>;

    CancelledSteps() { m_window.OpenSample(Folder(u"project"_s)); }

    editor::Project& Project() const { return *m_window.OpenedProject(); }

    /// Cancels a step at one of its pieces, counted from 0.
    editor::ModuleSteps::Runner CancelAt(int piece) const
    {
        return [this, piece](const editor::WatchedStep& step) {
            int next = 0;
            const auto cancel = [&](bool mayStop) {
                if (mayStop && next++ == piece) throw embedded::Cancelled();
            };
            const editor::StepWatch watch(Project().Roles(), cancel, step.draft);
            try {
                step.work();
                return true;
            } catch (const embedded::Cancelled&) {
                return false;
            }
        };
    }

    /// Whatever stands in the test's folder, with its bytes.
    std::map<QString, QByteArray> Everything() const
    {
        std::map<QString, QByteArray> files;
        QDirIterator walk(Folder(u"."_s), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                          QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            QFile file(walk.next());
            // The folder of the locks comes with the first one and stays.
            if (file.fileName().endsWith(u"/history") || file.fileName().endsWith(u"/history/locks"))
                continue;
            files[file.fileName()] = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        }
        return files;
    }

    /// Cancels a step at its first piece, then at its second and so on, until it passes; gives their number.
    int CancelEverywhere(const Step& step)
    {
        const auto before = Everything();
        for (int piece = 0;; ++piece) {
            editor::ModuleSteps steps(&m_window, Project(), CancelAt(piece));
            const StepEnd end = step(steps);
            if (end == StepEnd::Done) return piece;
            EXPECT_EQ(end, StepEnd::Cancelled);
            EXPECT_TRUE(Everything() == before) << "piece " << piece;
        }
    }

    /// Whether the head stands in a finished file.
    bool HasHead(const CString& name) const
    {
        const auto file = store::ParseWrapped(m_folder.ReadFile(name));
        if (!file) return false;
        return file->content.contains(" CalMode=") && file->content.contains(" BillGuid=") &&
               file->content.contains(" QuotaYear=");
    }

    StepEnd HeadOnOriginal(editor::ModuleSteps& steps) const
    {
        const test::NextWindows user(
            {[](QDialog& window) { test::PressButton(window, u"写在这个文件上"_s); }});
        return steps.WriteHead(m_folder.Path(CurrentFile));
    }
};

} // namespace

TEST_F(CancelledSteps, CancelledRefreshLeavesEveryFileAsItWas)
{
    const qint64 categories = Project().CountCategories({Project().Spec()});
    const int pieces =
        CancelEverywhere([&](editor::ModuleSteps& steps) { return steps.Refresh(m_folder.Path(OtherFile)); });
    EXPECT_GT(pieces, categories);
    EXPECT_EQ(Project().CurrentRuleFile(), m_folder.Path(OtherFile));
    EXPECT_EQ(m_messages.Texts(), QStringList());
}

TEST_F(CancelledSteps, CancelledRebuildingLeavesEveryFileAsItWas)
{
    const CString file = u"project\\app\\AttrConfig.xml"_s;
    const QByteArray before = QStringLiteral("<属性类型配置信息/>").toUtf8();
    m_folder.WriteFile(file, before);
    const int pieces = CancelEverywhere([](editor::ModuleSteps& steps) { return steps.RebuildAttributes(); });
    CStringArray specs = Project().Specs();
    specs.removeAll(u"建筑"_s); // has no place in the attribute configuration
    EXPECT_GT(pieces, Project().CountCategories(specs));
    EXPECT_NE(m_folder.ReadFile(file), before);
}

TEST_F(CancelledSteps, CancelledHeadOnTheOriginalLeavesEveryFileAsItWas)
{
    const int pieces = CancelEverywhere([&](editor::ModuleSteps& steps) { return HeadOnOriginal(steps); });
    EXPECT_GT(pieces, 5);
    EXPECT_EQ(shared::ExamineRuleFile(m_folder.Path(CurrentFile)).kind, shared::RuleFileKind::Wrapped);
}

TEST_F(CancelledSteps, CancelledHeadOnACopyLeavesNoCopy)
{
    const QByteArray before = m_folder.ReadFile(CurrentFile);
    CancelEverywhere([&](editor::ModuleSteps& steps) {
        const test::NextWindows user({[](QDialog& window) { test::PressButton(window, u"写在副本上"_s); },
                                      [&](QDialog& window) {
                                          window.findChild<QLineEdit*>()->setText(Folder(u"copy.xml"_s));
                                          window.accept();
                                      }});
        return steps.WriteHead(m_folder.Path(CurrentFile));
    });
    EXPECT_EQ(m_folder.ReadFile(CurrentFile), before);
    EXPECT_EQ(shared::ExamineRuleFile(m_folder.Path(u"copy.xml"_s)).kind, shared::RuleFileKind::Wrapped);
}

// The module itself passes over a head that it could not write to its draft.
TEST_F(CancelledSteps, HeadThatFailsAtAnyWritePointLeavesTheFileAsItWas)
{
    const QByteArray before = m_folder.ReadFile(CurrentFile);
    int failures = 0;
    for (int point = 0, points = 1; point < points; ++point) {
        test::FaultyFileSystem files;
        files.FailAfter(3);
        files.OnlyAt(point);
        editor::ModuleSteps steps(&m_window, Project());
        bool done = false;
        editor::RunGuarded([&] { done = HeadOnOriginal(steps) == StepEnd::Done; });
        points = done ? files.WritePoints() : point + 2;
        if (done) {
            EXPECT_TRUE(HasHead(CurrentFile)) << "point " << point;
        } else {
            ++failures;
            EXPECT_EQ(m_folder.ReadFile(CurrentFile), before) << "point " << point;
        }
        m_folder.WriteFile(CurrentFile, before);
    }
    EXPECT_GE(failures, 3);
}
