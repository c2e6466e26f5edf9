#include "editor/ModuleSteps.h"

#include "editor/Boxes.h"
#include "editor/ChosenFile.h"
#include "editor/LongStep.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "presenter/CAutoQdDeConfigFacade.h"
#include "presenter/RefreshAutoConfig.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtWidgets/QFileDialog>

#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// About how many files a step reads and changes beside the categories that it goes through.
constexpr qint64 FilesOfAttributes = 3;
constexpr qint64 FilesOfRefresh = 20;
constexpr qint64 FilesOfHead = 24;

/// The module reads a file of this size in one go, without a piece of work in between at which a window could
/// come, in about a tenth of a second.
constexpr qint64 LargeSize = 8'000'000;

bool IsLarge(const CString& path)
{
    return QFileInfo(platform::ToNative(path)).size() > LargeSize;
}

/// A file beside another one, for as long as this lives.
class Draft
{
public:
    explicit Draft(const CString& target)
        : m_path(target + u'.' + CString::number(QCoreApplication::applicationPid()) + u".part"_s)
    {
    }
    ~Draft() { platform::Files().Remove(m_path); }
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;

    const CString& Path() const { return m_path; }

private:
    CString m_path;
};

QByteArray ReadOrRaise(const CString& path)
{
    CString reason;
    const auto bytes = platform::Files().Read(path, &reason);
    if (!bytes) throw platform::FileError(path, reason);
    return *bytes;
}

/// Writes a file in one go. What it held before comes back when that fails midway.
void Replace(const CString& path, const QByteArray& bytes)
{
    platform::FileSystem& files = platform::Files();
    const bool stood = files.Exists(path);
    const QByteArray former = stood ? ReadOrRaise(path) : QByteArray();
    try {
        files.WriteInPlace(path, bytes);
    } catch (const platform::FileError&) {
        stood ? files.PutBack(path, former) : static_cast<void>(files.Remove(path));
        throw;
    }
}

} // namespace

ModuleSteps::ModuleSteps(QWidget* window, Project& project, Runner run)
    : m_window(window), m_project(project), m_run(std::move(run))
{
    if (!m_run)
        m_run = [this](const WatchedStep& step) { return RunWatched(m_window, m_project.Roles(), step); };
}

bool ModuleSteps::Configure()
{
    const CString ruleFile = m_project.CurrentRuleFile();
    if (!MayOpen(ruleFile) || !m_project.KeepCopy(ruleFile)) return false;
    CAutoQdDeConfigFacade::StartQdDeConfig(m_window, CRect());
    return true;
}

std::optional<WizardEnd> ModuleSteps::RunWizard(const WizardStart& start)
{
    if (!MayOpen(start.ruleFile) || !m_project.KeepCopy(start.ruleFile)) return std::nullopt;
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
    if (!MayOpen(m_project.CurrentRuleFile())) return StepEnd::Refused;
    CString message;
    bool taken = false;
    // Both files are read.
    const qint64 pieces = 2 * m_project.CountCategories({m_project.Spec()}) + FilesOfRefresh;
    if (!m_run({u"正在刷新…"_s,
                pieces,
                {},
                [&] { taken = RefreshAutoConfig(message, ruleFile); },
                IsLarge(ruleFile) || IsLarge(m_project.CurrentRuleFile())}))
        return StepEnd::Cancelled;
    if (taken) return StepEnd::Done;
    const RuleFileState state = ExamineRuleFile(ruleFile);
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
    const Draft draft(target);
    bool written = false;
    if (!m_run({u"正在写文件头…"_s, FilesOfHead, draft.Path(),
                [&] { written = WriteHeadTo(ruleFile, target, draft.Path()); }, IsLarge(ruleFile)}))
        return StepEnd::Cancelled;
    return written ? StepEnd::Done : StepEnd::Refused;
}

/// The module writes a file twice and removes it in between. It does so to the draft, and the target is
/// written at the end in one go: until then the step can be cancelled or fail without a trace.
bool ModuleSteps::WriteHeadTo(const CString& ruleFile, const CString& target, const CString& draft)
{
    const QByteArray rules = ReadOrRaise(ruleFile);
    platform::Files().WriteInPlace(draft, rules);
    CAutoQdDeConfigFacade::WriteHead(draft);
    const QByteArray finished = ReadOrRaise(draft);
    if (finished == rules) throw platform::FileError(ruleFile, u"不是规则文件，没有写文件头"_s);
    if (!m_project.KeepCopy(target)) return false;
    Replace(target, finished);
    return true;
}

bool ModuleSteps::MayOpen(const CString& ruleFile)
{
    RuleFileState state;
    if (!RunLongStep(m_window, u"正在检查规则文件…"_s,
                     [&](StepControl&) { state = ExamineRuleFile(ruleFile); }))
        return false;
    return state.IsSafe() || AskOpenAnyway(m_window, platform::ToNative(ruleFile), state.Describe());
}

/// Empty when the user decided otherwise.
CString ModuleSteps::AskForTarget(const CString& ruleFile)
{
    const HeadTarget target = AskHeadTarget(m_window, platform::ToNative(ruleFile));
    if (target == HeadTarget::Original) return ruleFile;
    if (target == HeadTarget::None) return {};
    const QString proposed =
        QDir::homePath() + u'/' + platform::BeforeLastStop(platform::FileNameOf(ruleFile)) + u".xml"_s;
    const QString file =
        QFileDialog::getSaveFileName(m_window, u"写了文件头的副本"_s, proposed, u"规则文件 (*.xml)"_s);
    return PathTextOf(file);
}

} // namespace editor
