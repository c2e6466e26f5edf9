#include "editor/window/MainWindow.h"

#include "editor/dialogs/DialogParts.h"
#include "editor/dialogs/HistoryWindow.h"
#include "editor/dialogs/TransferDialog.h"
#include "editor/files/FilePanel.h"
#include "editor/messages/Boxes.h"
#include "editor/project/ChosenFile.h"
#include "editor/project/Project.h"
#include "editor/steps/LongStep.h"
#include "editor/window/CategoryOpener.h"
#include "editor/workbench/Workbench.h"
#include "embedded/data/engine/Error.h"
#include "platform/Paths.h"
#include "shared/RuleFileState.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

// What the commands do with rule files and data.

namespace editor {

namespace {

QString EndText(WizardEnd end)
{
    switch (end) {
    case WizardEnd::Next:
        return u"向导结束：下一步"_s;
    case WizardEnd::Back:
        return u"向导结束：上一步"_s;
    case WizardEnd::Cancelled:
        break;
    }
    return u"向导结束：取消"_s;
}

/// Whether two path texts name the same file, be it by a link.
bool IsSameFile(const CString& left, const CString& right)
{
    return left == right || QFileInfo(platform::ToNative(left)) == QFileInfo(platform::ToNative(right));
}

/// A table is never meant to stand in the place of a rule file. Nor could that one be kept: whoever is asked
/// when no copy can be made must not be asked from another thread.
void RefuseRuleFile(const QString& nativeFile)
{
    if (!nativeFile.endsWith(u".xml"_s, Qt::CaseInsensitive)) return;
    throw embedded::Error(
        u"%1：不能导出到 .xml 文件，请换一个文件名"_s.arg(QDir::toNativeSeparators(nativeFile)));
}

} // namespace

ModuleSteps MainWindow::Steps()
{
    return ModuleSteps(this, *m_project);
}

void MainWindow::TellEnd(StepEnd end, const QString& done)
{
    if (end == StepEnd::Done) Tell(done);
    if (end == StepEnd::Cancelled) Tell(u"已取消，文件没有变"_s);
}

// Read on another thread: a folder may hold many large files. A user who cancels keeps what has been read.
void MainWindow::ExamineRuleFiles()
{
    const CStringArray paths = m_project->RuleFiles();
    QList<RuleFileEntry> files;
    RunLongStep(this, u"正在检查规则文件…"_s, [&](StepControl& control) {
        for (const CString& path : paths) {
            files.append(ExamineEntry(path));
            control.Report(files.size(), paths.size());
            control.Check();
        }
    });
    m_files->Show(files);
    m_workbench->OtherFilesChanged();
    const auto unsafe =
        std::count_if(files.begin(), files.end(), [](const auto& file) { return !file.state.IsSafe(); });
    Tell(unsafe == 0 ? u"%1 个规则文件"_s.arg(files.size())
                     : u"%1 个规则文件，其中 %2 个不能编辑"_s.arg(files.size()).arg(unsafe));
}

StepEnd MainWindow::RunAndExamine(const std::function<StepEnd()>& step)
{
    const CString current = m_project->CurrentRuleFile();
    StepEnd end = StepEnd::Refused;
    try {
        end = step();
    } catch (...) {
        ExamineRuleFiles();
        FollowFiles(current);
        throw;
    }
    if (end == StepEnd::Cancelled) return end;
    ExamineRuleFiles();
    FollowFiles(current);
    return end;
}

void MainWindow::Configure()
{
    if (!MayLeaveRules()) return;
    const CategoryOpener atChosen(m_session.CategoryText());
    TellEnd(RunAndExamine([&] { return Steps().Configure(); }), u"配置已保存"_s);
}

void MainWindow::RunWizard()
{
    if (!MayLeaveRules()) return;
    ModuleSteps steps = Steps();
    const auto selected = m_files->Selected();
    const CString file = selected ? selected->state.path : m_project->CurrentRuleFile();
    WizardDialog dialog(this, steps.ProposedStart(file), m_project->RuleFiles());
    if (dialog.exec() != QDialog::Accepted) return;
    std::optional<WizardEnd> end;
    RunAndExamine([&] {
        end = steps.RunWizard(dialog.Start());
        return end ? StepEnd::Done : StepEnd::Refused;
    });
    if (end) Tell(EndText(*end));
}

void MainWindow::Refresh()
{
    MakeCurrent(m_files->Selected()->state.path);
}

void MainWindow::RefreshOther()
{
    const QString file = ChooseRuleFile(this, m_project->Folder());
    if (!file.isEmpty()) MakeCurrent(PathTextOf(file));
}

void MainWindow::MakeCurrent(const CString& ruleFile)
{
    if (!MayLeaveRules()) return;
    const StepEnd end = RunAndExamine([&] { return Steps().Refresh(ruleFile); });
    TellEnd(end, u"已设为当前配置：%1"_s.arg(platform::ToNative(m_project->CurrentRuleFile())));
    if (end == StepEnd::Done) WarnUnlessCurrent(ruleFile);
}

// The module takes a file from anywhere, but the project remembers its name only.
void MainWindow::WarnUnlessCurrent(const CString& ruleFile)
{
    const shared::RuleFileState current = shared::ExamineRuleFile(m_project->CurrentRuleFile());
    if (IsSameFile(current.path, ruleFile)) return;
    ShowWarning(u"工程只记住文件名，不会用文件夹以外的\n%1\n当前配置现在是\n%2（%3）"_s.arg(
        platform::ToNative(ruleFile), platform::ToNative(current.path), current.Describe()));
}

void MainWindow::RebuildAttributes()
{
    TellEnd(Steps().RebuildAttributes(), u"已重建属性配置文件"_s);
}

void MainWindow::WriteHead()
{
    if (!MayLeaveRules()) return;
    TellEnd(RunAndExamine([&] { return Steps().WriteHead(m_files->Selected()->state.path); }),
            u"已写文件头"_s);
}

void MainWindow::ShowHistory()
{
    HistoryWindow window(this, *m_project, m_files->Selected()->state.path);
    window.exec();
    if (!window.HasRestored()) return;
    ExamineRuleFiles();
    FollowFiles(m_project->CurrentRuleFile());
}

// The host keeps the catalogue in memory, so a changed one is opened anew.
void MainWindow::ImportData()
{
    if (!MayLeaveRules()) return;
    TransferDialog dialog(this, TransferDialog::Direction::Import, *m_project);
    if (dialog.exec() != QDialog::Accepted) return;
    const auto kind = dialog.Kind();
    const auto options = dialog.Options();
    const QString file = dialog.File();
    embedded::ImportReport report;
    const auto run = [&](bool isTrial) {
        auto chosen = options;
        chosen.isTrial = isTrial;
        RunLongStep(this, isTrial ? u"正在检查…"_s : u"正在导入…"_s,
                    [&, folder = m_project->Folder()](StepControl& control) {
                        report = embedded::Import(folder, kind, file, chosen, control.AsProgress());
                    });
    };
    run(true);
    const CString question = ImportQuestion(report);
    if (!question.isEmpty() && !AskYesNo(question)) return;
    if (report.refused.isEmpty() && !report.cancelled) run(false);
    MakeImportReport(this, report)->exec();
    if (report.stored) Open(m_project->Folder());
}

void MainWindow::ExportData()
{
    TransferDialog dialog(this, TransferDialog::Direction::Export, *m_project);
    if (dialog.exec() != QDialog::Accepted) return;
    const auto kind = dialog.Kind();
    const QString file = dialog.File();
    RefuseRuleFile(file);
    const CString library = dialog.Options().library;
    const bool done =
        RunLongStep(this, u"正在导出…"_s, [&, folder = m_project->Folder()](StepControl& control) {
            embedded::Export(folder, kind, file, library, control.AsProgress());
        });
    TellEnd(done ? StepEnd::Done : StepEnd::Cancelled, u"已导出到 %1"_s.arg(QDir::toNativeSeparators(file)));
}

} // namespace editor
