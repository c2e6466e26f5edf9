#include "editor/MainWindow.h"

#include "editor/ChosenFile.h"
#include "editor/HistoryWindow.h"
#include "editor/LongStep.h"
#include "editor/Project.h"
#include "editor/ProjectPanel.h"
#include "editor/TransferDialog.h"
#include "platform/Paths.h"

#include <QtCore/QDir>
#include <QtWidgets/QFileDialog>

#include <algorithm>

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
    QList<RuleFileState> states;
    RunLongStep(this, u"正在检查规则文件…"_s, [&](StepControl& control) {
        for (const CString& path : paths) {
            states.append(ExamineRuleFile(path));
            control.Report(states.size(), paths.size());
            control.Check();
        }
    });
    m_panel->ShowRuleFiles(states);
    const auto unsafe =
        std::count_if(states.begin(), states.end(), [](const auto& s) { return !s.IsSafe(); });
    Tell(unsafe == 0 ? u"%1 个规则文件"_s.arg(states.size())
                     : u"%1 个规则文件，其中 %2 个不能编辑"_s.arg(states.size()).arg(unsafe));
}

void MainWindow::Configure()
{
    const bool done = Steps().Configure();
    ExamineRuleFiles();
    if (done) Tell(u"配置已保存"_s);
}

void MainWindow::RunWizard()
{
    ModuleSteps steps = Steps();
    const RuleFileState* selected = m_panel->Selected();
    const CString file = selected == nullptr ? m_project->CurrentRuleFile() : selected->path;
    WizardDialog dialog(this, steps.ProposedStart(file), m_project->RuleFiles());
    if (dialog.exec() != QDialog::Accepted) return;
    const auto end = steps.RunWizard(dialog.Start());
    ExamineRuleFiles();
    if (end) Tell(EndText(*end));
}

void MainWindow::Refresh()
{
    MakeCurrent(m_panel->Selected()->path);
}

void MainWindow::RefreshOther()
{
    const QString file =
        QFileDialog::getOpenFileName(this, u"规则文件"_s, m_project->Folder(), u"规则文件 (*.xml)"_s);
    if (!file.isEmpty()) MakeCurrent(PathTextOf(file));
}

void MainWindow::MakeCurrent(const CString& ruleFile)
{
    const StepEnd end = Steps().Refresh(ruleFile);
    ExamineRuleFiles();
    TellEnd(end, u"已设为当前配置：%1"_s.arg(platform::ToNative(ruleFile)));
}

void MainWindow::RebuildAttributes()
{
    TellEnd(Steps().RebuildAttributes(), u"已重建属性配置文件"_s);
}

void MainWindow::WriteHead()
{
    const StepEnd end = Steps().WriteHead(m_panel->Selected()->path);
    ExamineRuleFiles();
    TellEnd(end, u"已写文件头"_s);
}

void MainWindow::ShowHistory()
{
    HistoryWindow window(this, m_project->Folder(), m_panel->Selected()->path);
    window.exec();
    if (window.HasRestored()) ExamineRuleFiles();
}

// The host keeps the catalogue in memory, so a changed one is opened anew.
void MainWindow::ImportData()
{
    TransferDialog dialog(this, TransferDialog::Direction::Import, *m_project);
    if (dialog.exec() != QDialog::Accepted) return;
    const auto kind = dialog.Kind();
    const auto options = dialog.Options();
    const QString file = dialog.File();
    embedded::ImportReport report;
    RunLongStep(this, u"正在导入…"_s, [&, folder = m_project->Folder()](StepControl& control) {
        report = embedded::Import(folder, kind, file, options, control.AsProgress());
    });
    ShowImportReport(this, report);
    if (report.stored) Open(m_project->Folder());
}

void MainWindow::ExportData()
{
    TransferDialog dialog(this, TransferDialog::Direction::Export, *m_project);
    if (dialog.exec() != QDialog::Accepted) return;
    const auto kind = dialog.Kind();
    const QString file = dialog.File();
    const CString library = dialog.Options().library;
    const bool done =
        RunLongStep(this, u"正在导出…"_s, [&, folder = m_project->Folder()](StepControl& control) {
            embedded::Export(folder, kind, file, library, control.AsProgress());
        });
    TellEnd(done ? StepEnd::Done : StepEnd::Cancelled, u"已导出到 %1"_s.arg(QDir::toNativeSeparators(file)));
}

} // namespace editor
