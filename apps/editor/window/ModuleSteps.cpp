#include "editor/window/ModuleSteps.h"

#include "editor/dialogs/DialogParts.h"
#include "editor/files/KeepFirstQuestion.h"
#include "editor/messages/Boxes.h"
#include "editor/project/ChosenFile.h"
#include "editor/steps/BusyCursor.h"
#include "editor/steps/LongStep.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "presenter/CAutoQdDeConfigFacade.h"
#include "presenter/RefreshAutoConfig.h"
#include "shared/RuleFileState.h"
#include "store/RuleFileHead.h"
#include "store/WrappedFile.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QScopeGuard>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QFileDialog>

#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// About how many files a step reads and changes beside the categories that it goes through.
constexpr qint64 FilesOfAttributes = 3;
constexpr qint64 FilesOfRefresh = 20;
constexpr qint64 FilesOfHead = 24;

/// Writes a file in one go. What it held before comes back when that fails midway.
void Replace(const CString& path, const QByteArray& bytes)
{
    platform::FileSystem& files = platform::Files();
    const bool stood = files.Exists(path);
    const QByteArray former = stood ? platform::Files().ReadWhole(path) : QByteArray();
    try {
        files.WriteInPlace(path, bytes);
    } catch (const platform::FileError&) {
        stood ? files.PutBack(path, former) : static_cast<void>(files.Remove(path));
        throw;
    }
}

StepEnd EndOf(bool isDone)
{
    return isDone ? StepEnd::Done : StepEnd::Refused;
}

/// Runs a step, or a part of one that changes nothing before it has the files that it needs.
template <typename Step>
StepEnd CancelledWithItsWait(Step step)
{
    try {
        return step();
    } catch (const embedded::WaitEnded&) {
        return StepEnd::Cancelled;
    }
}

} // namespace

ModuleSteps::ModuleSteps(QWidget* window, Project& project, Runner run)
    : m_window(window), m_project(project), m_run(std::move(run))
{
    if (!m_run)
        m_run = [this](const WatchedStep& step) { return RunWatched(m_window, m_project.Roles(), step); };
}

StepEnd ModuleSteps::Configure()
{
    const StepEnd prepared = PrepareToOpen(m_project.CurrentRuleFile());
    if (prepared != StepEnd::Done) return prepared;
    const BusyUntilWindow busy; // a large file takes a while to read
    const auto forget = qScopeGuard([this] { m_project.ForgetProposedNumbers(); });
    CAutoQdDeConfigFacade::StartQdDeConfig(m_window, CRect());
    return StepEnd::Done;
}

std::optional<WizardEnd> ModuleSteps::RunWizard(const WizardStart& start)
{
    if (PrepareToOpen(start.ruleFile) != StepEnd::Done) return std::nullopt;
    const BusyUntilWindow busy;
    const auto forget = qScopeGuard([this] { m_project.ForgetProposedNumbers(); });
    const int end = CAutoQdDeConfigFacade::StartOnlineConfig(start.ruleFile, start.billFile, start.quotaFile,
                                                             start.note, start.allowBack, m_window);
    return static_cast<WizardEnd>(end);
}

WizardStart ModuleSteps::ProposedStart(const CString& ruleFile)
{
    return {ruleFile, m_project.BillLibrary(), m_project.QuotaLibrary(), {}, true};
}

StepEnd ModuleSteps::Refresh(const CString& ruleFile)
{
    // The module opens the present configuration and saves it before it turns to the other file.
    const StepEnd asked = CancelledWithItsWait([&] { return AskToOpen(m_project.CurrentRuleFile()); });
    if (asked != StepEnd::Done) return asked;
    const auto held = m_project.HoldFiles();
    CString message;
    bool taken = false;
    // Both files are read.
    const qint64 pieces = 2 * m_project.CountCategories({m_project.Spec()}) + FilesOfRefresh;
    if (!m_run({u"正在刷新…"_s,
                pieces,
                {},
                [&] { taken = RefreshAutoConfig(message, ruleFile); },
                shared::IsLarge(ruleFile) || shared::IsLarge(m_project.CurrentRuleFile())}))
        return StepEnd::Cancelled;
    if (taken) return StepEnd::Done;
    const shared::RuleFileState state = shared::ExamineRuleFile(ruleFile);
    ShowWarning(u"%1\n%2\n%3"_s.arg(message, platform::ToNative(ruleFile), state.Describe()));
    return StepEnd::Refused;
}

StepEnd ModuleSteps::RebuildAttributes()
{
    const qint64 pieces = m_project.CountCategories(m_project.Specs()) + FilesOfAttributes;
    const bool ended = m_run({u"正在重建属性…"_s, pieces, {}, [] { CAutoQdDeConfigFacade::AttrConfig(); }});
    return ended ? StepEnd::Done : StepEnd::Cancelled;
}

StepEnd ModuleSteps::WriteHead(const CString& ruleFile)
{
    const CString target = AskForTarget(ruleFile);
    if (target.isEmpty()) return StepEnd::Refused;
    // Away from the rule files: should this program be killed, nothing stays among them. The ending keeps the
    // draft out of the history.
    const QTemporaryDir folder;
    if (!folder.isValid()) throw platform::FileError(ruleFile, folder.errorString());
    const CString draft = platform::FromNative(folder.filePath(u"draft"_s));
    const auto held = m_project.HoldFiles();
    return CancelledWithItsWait([&] {
        bool written = false;
        if (!m_run({u"正在写文件头…"_s, FilesOfHead, draft,
                    [&] { written = WriteHeadTo(ruleFile, target, draft); }, shared::IsLarge(ruleFile)}))
            return StepEnd::Cancelled;
        return EndOf(written);
    });
}

/// The module writes a file twice and removes it in between. It does so to the draft, and the target is
/// written at the end in one go: until then the step can be cancelled or fail without a trace.
bool ModuleSteps::WriteHeadTo(const CString& ruleFile, const CString& target, const CString& draft)
{
    const QByteArray rules = platform::Files().ReadWhole(ruleFile);
    platform::Files().WriteInPlace(draft, rules);
    CAutoQdDeConfigFacade::WriteHead(draft);
    const QByteArray finished = platform::Files().ReadWhole(draft);
    if (finished == rules) throw platform::FileError(ruleFile, u"不是规则文件，没有写文件头"_s);
    // The module passes over a head that it could not write, and wraps the file without.
    const auto wrapped = store::ParseWrapped(finished);
    if (!wrapped || !store::HoldsHead(*wrapped)) throw platform::FileError(ruleFile, u"文件头写不成"_s);
    if (!m_project.KeepCopy(target)) return false;
    Replace(target, finished);
    return true;
}

StepEnd ModuleSteps::AskToOpen(const CString& ruleFile)
{
    shared::RuleFileState state;
    auto lock = m_project.Lock(ruleFile); // what is half written would look broken
    if (!RunLongStep(m_window, u"正在检查规则文件…"_s, [&](StepControl& control) {
            state = shared::ExamineRuleFile(ruleFile);
            control.Check();
        }))
        return StepEnd::Cancelled;
    lock.reset();
    if (state.kind == shared::RuleFileKind::Repeated) return EndOf(AskToKeepFirst(m_project, state));
    const bool mayOpen =
        state.IsSafe() || AskOpenAnyway(m_window, platform::ToNative(ruleFile), state.Describe());
    return EndOf(mayOpen);
}

StepEnd ModuleSteps::KeepFirst(const CString& ruleFile)
{
    const shared::RuleFileState state = shared::ExamineRuleFile(ruleFile);
    if (state.kind != shared::RuleFileKind::Repeated) return StepEnd::Refused;
    return CancelledWithItsWait([&] { return EndOf(AskToKeepFirst(m_project, state)); });
}

StepEnd ModuleSteps::PrepareToOpen(const CString& ruleFile)
{
    return CancelledWithItsWait([&] {
        const StepEnd asked = AskToOpen(ruleFile);
        if (asked != StepEnd::Done) return asked;
        return EndOf(m_project.KeepCopy(ruleFile));
    });
}

/// Empty when the user decided otherwise.
CString ModuleSteps::AskForTarget(const CString& ruleFile)
{
    const HeadTarget target = AskHeadTarget(m_window, platform::ToNative(ruleFile));
    if (target == HeadTarget::Original) return ruleFile;
    if (target == HeadTarget::None) return {};
    const QString proposed =
        QDir::homePath() + u'/' + platform::BeforeLastStop(platform::FileNameOf(ruleFile)) + u".xml"_s;
    QFileDialog dialog(m_window, u"写了文件头的副本"_s, QFileInfo(proposed).path(), RuleFileFilter());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(u"xml"_s);
    dialog.selectFile(proposed);
    return dialog.exec() == QDialog::Accepted ? PathTextOf(dialog.selectedFiles().value(0)) : CString();
}

} // namespace editor
