#include "editor/ModuleSteps.h"

#include "editor/Boxes.h"
#include "editor/ChosenFile.h"
#include "editor/LongStep.h"
#include "platform/Files.h"
#include "platform/Messages.h"
#include "platform/Paths.h"
#include "presenter/CAutoQdDeConfigFacade.h"
#include "presenter/RefreshAutoConfig.h"

#include <QtGui/QGuiApplication>
#include <QtWidgets/QFileDialog>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// Shows that the window is busy: the module works on the window's thread and cannot be interrupted.
class BusyCursor
{
public:
    BusyCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyCursor() { QGuiApplication::restoreOverrideCursor(); }
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
};

void CopyOver(const CString& from, const CString& to)
{
    CString reason;
    if (!platform::Files().Copy(from, to, &reason)) throw platform::FileError(to, reason);
}

} // namespace

ModuleSteps::ModuleSteps(QWidget* window, Project& project) : m_window(window), m_project(project) {}

bool ModuleSteps::Configure()
{
    if (!MayOpen(m_project.CurrentRuleFile())) return false;
    CAutoQdDeConfigFacade::StartQdDeConfig(m_window, CRect());
    return true;
}

std::optional<WizardEnd> ModuleSteps::RunWizard(const WizardStart& start)
{
    if (!MayOpen(start.ruleFile)) return std::nullopt;
    const int end = CAutoQdDeConfigFacade::StartOnlineConfig(start.ruleFile, start.billFile, start.quotaFile,
                                                             start.note, start.allowBack, m_window);
    return static_cast<WizardEnd>(end);
}

WizardStart ModuleSteps::ProposedStart(const CString& ruleFile)
{
    return {ruleFile, m_project.BillLibrary(), m_project.QuotaLibrary(), {}, true};
}

bool ModuleSteps::Refresh(const CString& ruleFile)
{
    // The module opens the present configuration and saves it before it turns to the other file.
    if (!MayOpen(m_project.CurrentRuleFile())) return false;
    CString message;
    {
        const BusyCursor busy;
        if (RefreshAutoConfig(message, ruleFile)) return true;
    }
    const RuleFileState state = ExamineRuleFile(ruleFile);
    platform::ShowWarning(u"%1\n%2\n%3"_s.arg(message, platform::ToNative(ruleFile), state.Describe()));
    return false;
}

void ModuleSteps::RebuildAttributes()
{
    const BusyCursor busy;
    CAutoQdDeConfigFacade::AttrConfig();
}

bool ModuleSteps::WriteHead(const CString& ruleFile)
{
    const HeadTarget target = AskHeadTarget(m_window, platform::ToNative(ruleFile));
    CString file = ruleFile;
    if (target == HeadTarget::Copy) file = AskForCopy(ruleFile);
    if (target == HeadTarget::None || file.isEmpty()) return false;
    if (!m_project.KeepCopy(file)) return false;
    if (file != ruleFile) CopyOver(ruleFile, file);
    const BusyCursor busy;
    CAutoQdDeConfigFacade::WriteHead(file);
    return true;
}

bool ModuleSteps::MayOpen(const CString& ruleFile)
{
    RuleFileState state;
    if (!RunLongStep(m_window, u"正在检查规则文件…"_s,
                     [&](StepControl&) { state = ExamineRuleFile(ruleFile); }))
        return false;
    if (!state.IsSafe() && !AskOpenAnyway(m_window, platform::ToNative(ruleFile), state.Describe()))
        return false;
    return m_project.KeepCopy(ruleFile);
}

/// Empty when the user decided otherwise.
CString ModuleSteps::AskForCopy(const CString& ruleFile)
{
    const QString proposed =
        QDir::homePath() + u'/' + platform::BeforeLastStop(platform::FileNameOf(ruleFile)) + u".xml"_s;
    const QString file =
        QFileDialog::getSaveFileName(m_window, u"写了文件头的副本"_s, proposed, u"规则文件 (*.xml)"_s);
    return PathTextOf(file);
}

} // namespace editor
