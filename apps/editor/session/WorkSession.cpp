#include "editor/session/WorkSession.h"

#include "editor/messages/ErrorBox.h"
#include "editor/project/Project.h"
#include "platform/Files.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// The rules of the other categories are to be read.
const auto OthersWanted = static_cast<QEvent::Type>(QEvent::registerEventType());

CStringArray CategoriesOf(const rules::Edit& edit)
{
    CStringArray categories;
    for (const rules::Splice& splice : edit.splices)
        if (!categories.contains(splice.category)) categories.append(splice.category);
    return categories;
}

} // namespace

/// One edit on the undo stack.
class WorkSession::EditCommand : public QUndoCommand
{
public:
    EditCommand(WorkSession& session, rules::Edit edit)
        : QUndoCommand(edit.text), m_session(session), m_edit(std::move(edit))
    {
    }

    void undo() override { m_session.Change(m_edit, true); }
    void redo() override { m_session.Change(m_edit, false); }
    const rules::Edit& Done() const noexcept { return m_edit; }

private:
    WorkSession& m_session;
    rules::Edit m_edit;
};

WorkSession::WorkSession(QObject* parent) : QObject(parent)
{
    SetProject(nullptr);
}

WorkSession::~WorkSession() = default;

void WorkSession::SetProject(Project* project)
{
    Close();
    m_project = project;
    RefreshFacts();
}

bool WorkSession::RefreshFacts()
{
    if (m_project != nullptr) return TakeFacts(FactsOf(*m_project));
    auto none = std::make_shared<ProjectFacts>();
    none->offered = std::make_shared<const rules::Configuration>(std::vector<rules::Specialty>());
    return TakeFacts(std::move(none));
}

bool WorkSession::TakeFacts(ProjectFactsPtr facts)
{
    m_facts = std::move(facts);
    bool canUndo = true;
    if (m_file) {
        const rules::ConfigurationPtr present = Draft().Snapshot();
        m_draft = rules::Draft(m_file->Rules(), m_facts->offered);
        m_draft.Apply(rules::Towards(m_draft, *present, {}));
        canUndo = GoesOnFrom(*present);
        if (!canUndo) m_undo.clear();
    }
    KeepChoiceValid();
    emit Reopened();
    return canUndo;
}

/// Whether all that can be undone or redone is about categories which are as they were.
bool WorkSession::GoesOnFrom(const rules::Configuration& former) const
{
    for (int i = 0; i < m_undo.count(); ++i)
        for (const CString& category :
             CategoriesOf(static_cast<const EditCommand*>(m_undo.command(i))->Done())) {
            const rules::SmallCategoryPtr was = former.Find(category);
            const rules::SmallCategoryPtr is = m_draft.Find(category);
            if (!was || !is || was->rules != is->rules) return false;
        }
    return true;
}

void WorkSession::Open(const CString& path)
{
    TakeFile(std::make_unique<DraftFile>(*m_project, path, FirstCategory()));
    emit Reopened();
    // Not before the windows have painted: on a machine of few cores the thread would hold them up.
    if (!m_isWhole) QCoreApplication::postEvent(this, new QEvent(OthersWanted), Qt::LowEventPriority - 1);
}

bool WorkSession::event(QEvent* event)
{
    if (event->type() != OthersWanted) return QObject::event(event);
    if (!m_file) return true;
    if (m_isWhole) TellCompleted(); // somebody has asked for them before
    m_file->ReadOthers([this, opened = m_opened] {
        QMetaObject::invokeMethod(
            this, [this, opened] { TakeOthers(opened); }, Qt::QueuedConnection);
    });
    return true;
}

/// Those of the file that was opened as that one, if it is still open.
void WorkSession::TakeOthers(int opened)
{
    if (opened != m_opened || !m_file) return;
    if (RunGuarded([this] { TakeRest(); })) TellCompleted();
}

/// Once for each file.
void WorkSession::TellCompleted()
{
    if (std::exchange(m_completed, m_opened) != m_opened) emit Completed();
}

void WorkSession::Recover(const LostDraft& lost)
{
    auto file = std::make_unique<DraftFile>(*m_project, lost.ruleFile, lost.base);
    const rules::Draft begun(file->Rules(), m_facts->offered);
    rules::Draft recovered = begun;
    for (const rules::Edit& edit : lost.edits)
        recovered.Apply(edit);
    const rules::Edit all = rules::Towards(begun, *recovered.Snapshot(), u"没有保存的修改"_s);
    TakeFile(std::move(file));
    emit Reopened();
    Do(all);
    if (m_journalFault.isEmpty()) DraftJournal::Remove(lost);
    if (!IsChanged()) TakeOver(); // the edits came to nothing: what counts is what the file holds
}

void WorkSession::TakeFile(std::unique_ptr<DraftFile> file)
{
    rules::Draft draft(file->RulesSoFar(), m_facts->offered);
    if (m_journal) m_journal->End();
    m_journalFault.clear();
    m_undo.clear();
    m_file = std::move(file);
    m_draft = std::move(draft);
    m_isWhole = m_file->IsWhole();
    ++m_opened;
    ForgetProposedNumbers();
    BeginJournal();
    m_elsewhere.clear();
    if (m_specialty.isEmpty()) m_specialty = m_project->Spec();
    const CString first = FirstCategory();
    if (first.isEmpty()) TakeRest();
    KeepChoiceValid();
    if (m_category != first) TakeRest();
}

const rules::Draft& WorkSession::Draft() const
{
    TakeRest();
    return m_draft;
}

/// Nothing has been edited before: whoever edits asks for the whole draft.
void WorkSession::TakeRest() const
{
    if (m_isWhole) return;
    m_draft.Rebase(m_file->Rules());
    m_isWhole = true;
}

/// The bill numbers that were proposed for rules which the file holds by now, or which nobody will write.
void WorkSession::ForgetProposedNumbers()
{
    if (m_project != nullptr) m_project->ForgetProposedNumbers();
}

void WorkSession::Close()
{
    if (m_journal) m_journal->End();
    m_journal.reset();
    m_journalFault.clear();
    m_undo.clear();
    m_file.reset();
    m_draft = rules::Draft();
    m_isWhole = true;
    ForgetProposedNumbers();
    m_specialty.clear();
    m_lastCategories.clear();
    KeepChoiceValid();
    emit Reopened();
}

DraftFile::SaveEnd WorkSession::Save(const AnswerConflicts& answer, const AskWhetherAnew& mayWriteAnew)
{
    const DraftFile::SaveEnd end = m_file->Save(Draft().Wanted(), answer, mayWriteAnew);
    if (end == DraftFile::SaveEnd::Cancelled) return end;
    ForgetProposedNumbers();
    m_undo.setClean();
    FollowFile(u"合并进来的修改"_s);
    return end;
}

void WorkSession::Discard()
{
    const rules::Draft saved(m_file->Rules(), m_facts->offered);
    Do(rules::Towards(Draft(), *saved.Snapshot(), u"放弃修改"_s, true));
}

void WorkSession::Reset()
{
    m_undo.clear();
    m_journal->End();
    BeginJournal();
    m_draft = rules::Draft(m_file->Rules(), m_facts->offered);
    m_isWhole = true;
    ForgetProposedNumbers();
    KeepChoiceValid();
    emit Reopened();
}

bool WorkSession::TakeOver()
{
    if (!m_file || IsChanged()) return false;
    try {
        TakeRest();
        m_file = std::make_unique<DraftFile>(*m_project, m_file->Path());
    } catch (const std::runtime_error&) {
        return false;
    }
    FollowFile(u"文件里的修改"_s);
    return true;
}

/// The edits so far are in the file; what it holds besides becomes one more, and what comes begins on that.
void WorkSession::FollowFile(const CString& text)
{
    const rules::Edit others = rules::Towards(m_draft, *m_file->Rules(), text, true);
    if (!others.IsEmpty()) m_undo.push(new EditCommand(*this, others));
    m_draft.Rebase(m_file->Rules());
    m_journal->End();
    BeginJournal();
    m_undo.setClean();
    KeepChoiceValid();
    // Another program may have brought categories that nobody knew.
    if (!others.IsEmpty()) emit Reopened();
    emit FileChanged();
}

void WorkSession::BeginJournal()
{
    m_journal = std::make_unique<DraftJournal>(
        m_project->Folder(), m_file->Path(), m_file->Bytes(),
        [this, journal = ++m_journals](const CString& reason) {
            QMetaObject::invokeMethod(
                this, [this, journal, reason] { NoteJournalFault(journal, reason); }, Qt::QueuedConnection);
        });
    m_journalFault.clear();
}

/// The disk has not taken what that journal had written.
void WorkSession::NoteJournalFault(int journal, const CString& reason)
{
    if (journal != m_journals || !m_file) return;
    m_journalFault = reason;
    emit JournalFailed();
}

const rules::FileStructure& WorkSession::Structure() const
{
    static const rules::FileStructure None;
    return m_file ? m_file->Structure() : None;
}

void WorkSession::Do(const rules::Edit& edit)
{
    if (edit.IsEmpty()) return;
    TakeRest();
    m_undo.push(new EditCommand(*this, edit));
}

void WorkSession::Change(const rules::Edit& edit, bool isReverted)
{
    const auto chosen = std::pair(m_rules, m_current);
    const rules::SmallCategoryPtr former = Category();
    isReverted ? m_draft.Revert(edit) : m_draft.Apply(edit);
    if (m_journalFault.isEmpty()) {
        try {
            m_journal->Add(isReverted ? edit.Inverse() : edit);
        } catch (const platform::FileError& error) {
            m_journalFault = error.Message();
        }
    }
    FollowRules(former);
    // Positions there may be others now, and nobody is to work on what he has not chosen.
    for (const CString& category : CategoriesOf(edit))
        m_elsewhere.erase(category);
    KeepChoiceValid();
    emit Edited(CategoriesOf(edit));
    if (chosen != std::pair(m_rules, m_current)) emit RulesChosen();
}

bool WorkSession::IsChanged() const
{
    return m_file && m_draft.IsChanged();
}

} // namespace editor
