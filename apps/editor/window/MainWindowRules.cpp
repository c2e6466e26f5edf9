#include "editor/docks/details/DetailPanel.h"
#include "editor/files/FileCommands.h"
#include "editor/files/FilePanel.h"
#include "editor/messages/Boxes.h"
#include "editor/messages/ErrorBox.h"
#include "editor/project/Project.h"
#include "editor/steps/BusyCursor.h"
#include "editor/steps/LongStep.h"
#include "editor/window/MainWindow.h"
#include "editor/window/ProjectPanel.h"
#include "editor/workbench/ConflictDialog.h"
#include "editor/workbench/Workbench.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/TimeText.h"
#include "rules/model/Snapshot.h"

#include <utility>

using namespace Qt::StringLiterals;

// How the rules of a file come onto the workbench, and back into their file.

namespace editor {

Workbench* MainWindow::MakeWorkbench()
{
    auto* workbench = new Workbench(
        m_session, {.run =
                        [this](const auto& step) {
                            RunAlone([&] {
                                m_details->Commit(); // what is being typed comes before what is commanded
                                step();
                            });
                        },
                    .openFile = [this](const RuleRow& found) { RunAlone([&] { GoToFile(found); }); },
                    .readOthers = [this] { return ReadOtherFiles(); },
                    .save = [this] { RunAlone([this] { SaveRules(); }); },
                    .tell = [this](const QString& text) { Tell(text); }});
    connect(&m_session, &WorkSession::Reopened, this, [this] { ShowTitle(); });
    connect(&m_session, &WorkSession::FileChanged, this, [this] { ShowTitle(); });
    connect(&m_session, &WorkSession::Edited, this, [this] {
        ShowTitle();
        TellJournalFault();
    });
    connect(&m_session, &WorkSession::JournalFailed, this, [this] { TellJournalFault(); });
    connect(&m_session, &WorkSession::SpecialtyChosen, this, [this] { TakeSpecialty(); });
    return workbench;
}

void MainWindow::ShowTitle()
{
    QString title = ProgramName();
    if (m_project) title = u"%1 - %2"_s.arg(m_project->Name(), title);
    setWindowTitle(title);
    m_workbench->SetHeading(m_session.IsOpen() ? m_session.File().Name() : QString(), m_session.IsChanged());
}

void MainWindow::TellJournalFault()
{
    if (!m_session.JournalFault().isEmpty())
        Tell(u"修改没有留底，程序意外结束会丢失，请及早保存：%1"_s.arg(m_session.JournalFault()));
}

void MainWindow::OpenRules(const CString& ruleFile)
{
    ReopenRules(ruleFile);
    if (m_session.IsOpen() || Steps().KeepFirst(ruleFile) != StepEnd::Done) return;
    ExamineRuleFiles();
    ReopenRules(ruleFile);
}

void MainWindow::ReopenRules(const CString& ruleFile)
{
    try {
        const BusyCursor busy; // not over what is asked afterwards
        m_session.Open(ruleFile);
        m_workbench->ShowNotice({});
    } catch (const std::runtime_error& error) {
        m_session.Close();
        m_workbench->ShowNotice(
            u"%1 不能在这里编辑：%2"_s.arg(platform::ToNative(ruleFile), CString::fromUtf8(error.what())));
        return;
    }
    OfferLostDraft(ruleFile);
}

void MainWindow::OfferLostDraft(const CString& ruleFile)
{
    for (const LostDraft& lost : DraftJournal::FindLost(m_project->Folder(), ruleFile)) {
        const CString text = u"程序上一次没有保存就结束了，“%1”的修改还在：%2 处，最后一处改于 %3"_s
                                 .arg(m_session.File().Name())
                                 .arg(lost.edits.size())
                                 .arg(platform::TimeText(lost.changed));
        const RecoverAnswer answer = AskRecover(this, text);
        if (answer == RecoverAnswer::Discard) DraftJournal::Remove(lost);
        if (answer != RecoverAnswer::Recover) continue;
        Recover(lost);
        return; // the others are offered the next time
    }
}

void MainWindow::Recover(const LostDraft& lost)
{
    try {
        m_session.Recover(lost);
        m_workbench->ShowNotice({});
    } catch (const std::logic_error&) {
        ShowWarning(u"没有保存的修改与文件接不上，没有接着改；它们仍留着"_s);
    }
}

void MainWindow::OfferDraftsWithoutFile()
{
    for (const LostDraft& lost : DraftJournal::FindWithoutFile(m_project->Folder())) {
        // What the project works on may be a file that does not stand there yet; it has been offered.
        if (m_session.IsOpen() && lost.ruleFile == m_session.File().Path()) continue;
        const CString text = u"程序上一次没有保存就结束了，“%1”的修改还在：%2 处，最后一处改于 %3。"
                             "但它的文件不在了：被删除、移走，或者改了名"_s
                                 .arg(platform::BeforeLastStop(platform::FileNameOf(lost.ruleFile)))
                                 .arg(lost.edits.size())
                                 .arg(platform::TimeText(lost.changed));
        const RecoverAnswer answer = AskRestore(this, text);
        if (answer == RecoverAnswer::Discard) {
            DraftJournal::Remove(lost);
            continue;
        }
        if (answer == RecoverAnswer::Recover) RestoreRules(lost);
        return; // the others are offered the next time
    }
}

/// The file comes first, and the draft goes with it from then on: whatever happens, it is offered again.
void MainWindow::RestoreRules(const LostDraft& lost)
{
    const CString name = platform::BeforeLastStop(platform::FileNameOf(lost.ruleFile));
    const FileEnd end = FileCommands(this, *m_project).Restore(name, lost.base);
    if (!end.done) return;
    const LostDraft attached = DraftJournal::Attach(m_project->Folder(), lost, end.path);
    ExamineRuleFiles();
    m_files->Select(end.path);
    if (!MayLeaveRules()) return;
    Recover(attached);
    Tell(end.told);
}

bool MainWindow::SwitchRules(const CString& ruleFile)
{
    if (m_session.IsOpen() && m_session.File().Path() == ruleFile) return true;
    if (!MayLeaveRules()) return false;
    OpenRules(ruleFile);
    return true;
}

bool MainWindow::FollowFiles(const CString& formerCurrent)
{
    const CString current = m_project->CurrentRuleFile();
    if (current != formerCurrent || !m_session.IsOpen()) {
        ReopenRules(current);
        return false;
    }
    const CString open = m_session.File().Path();
    if (m_session.TakeOver()) return true;
    if (!m_session.IsChanged()) ReopenRules(open); // which says why it cannot be read
    return false;
}

void MainWindow::FollowDisk(const QStringList& changed)
{
    ExamineRuleFiles();
    if (!m_session.IsOpen() || !changed.contains(m_session.File().Path())) return;
    m_details->Commit();
    const CString name = m_session.File().Name();
    if (!platform::Files().Exists(m_session.File().Path())) {
        Tell(u"另一个程序删除了 %1，或者给它改了名；保存时会问要不要重新写出它"_s.arg(name));
    } else if (m_session.IsChanged()) {
        Tell(u"另一个程序改了 %1；保存时会与您的修改合并"_s.arg(name));
    } else if (FollowFiles(m_project->CurrentRuleFile())) {
        Tell(u"另一个程序改了 %1，已换成新的内容；可以撤销"_s.arg(name));
    }
}

bool MainWindow::SaveRules()
{
    m_details->Commit();
    const CString name = m_session.File().Name();
    const DraftFile::SaveEnd end = m_session.Save(
        [&](const std::vector<rules::Conflict>& conflicts) {
            return ConflictDialog::Ask(conflicts, ConflictDialog::WordsForFile(name), this);
        },
        [&] {
            return AskYesNo(u"“%1”的文件不在了：另一个程序删除了它，或者给它改了名。选“否”不写，修改留着。\n"
                            u"要重新写出这个文件吗"_s.arg(name));
        });
    if (end == DraftFile::SaveEnd::Cancelled) return false;
    Tell(end == DraftFile::SaveEnd::Merged ? u"已保存 %1，并与另一个程序其间保存的修改合并"_s.arg(name)
                                           : u"已保存 %1"_s.arg(name));
    return true;
}

bool MainWindow::MayLeaveRules()
{
    m_details->Commit();
    if (!m_session.IsChanged()) return true;
    switch (AskLeave(this, m_session.File().Name())) {
    case LeaveAnswer::Save:
        return SaveRules();
    case LeaveAnswer::Discard:
        m_session.Reset();
        return true;
    case LeaveAnswer::Stay:
        break;
    }
    return false;
}

/// The file may have changed on the disk since the rule was found.
void MainWindow::GoToFile(const RuleRow& found)
{
    if (!SwitchRules(found.file) || !m_session.IsOpen()) return;
    if (!m_session.GoToRule(found.category->text, found.Get(), found.position))
        Tell(u"找到的规则已经不在 %1 中：另一个程序改了它"_s.arg(m_session.File().Name()));
}

/// Those that can be read; the others say so in the list of files.
std::vector<OtherFile> MainWindow::ReadOtherFiles()
{
    CStringArray paths = m_project->RuleFiles();
    if (m_session.IsOpen()) paths.removeAll(m_session.File().Path());
    std::vector<OtherFile> files;
    RunLongStep(this, u"正在读规则文件…"_s, [&](StepControl& control) {
        qint64 done = 0;
        for (const CString& path : paths) {
            CString reason;
            if (auto read = rules::ReadRuleFile(path, reason)) files.push_back({path, std::move(read)});
            control.Report(++done, paths.size());
            control.Check();
        }
    });
    return files;
}

/// The module's dialogs open on the specialty of the project.
void MainWindow::TakeSpecialty()
{
    if (!m_project || m_session.Specialty().isEmpty() || m_project->Spec() == m_session.Specialty()) return;
    try {
        m_project->SetSpec(m_session.Specialty());
        m_panel->ShowProject(*m_project);
    } catch (const std::exception& error) {
        Tell(u"工程没有记住专业“%1”：%2"_s.arg(m_session.Specialty(), CString::fromUtf8(error.what())));
    }
}

} // namespace editor
