#pragma once

#include "editor/session/DraftFile.h"
#include "editor/session/DraftJournal.h"
#include "editor/session/ProjectFacts.h"
#include "rules/draft/Draft.h"
#include "rules/draft/RuleEdits.h"

#include <QtCore/QObject>
#include <QtGui/QUndoStack>

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace editor {

class Project;

/// What the parts of the workbench work on together: the draft of one rule file, what is chosen in it, and
/// what the project knows. Its owner opens files and ends it; every part of the workbench reads it, asks it
/// for edits, and looks again when it signals. To be used on the thread of the windows; every signal comes
/// when the new state stands. WorkSessionChoice.cpp holds what is chosen, WorkSession.cpp the rest.
class WorkSession : public QObject
{
    Q_OBJECT

public:
    explicit WorkSession(QObject* parent = nullptr);
    ~WorkSession() override;

    /// Works on that project from now on; null for none. What was open is closed, with its edits lost. The
    /// project must be the host, and outlive this or be taken away before.
    void SetProject(Project* project);
    Project* OpenedProject() const noexcept { return m_project; }
    /// Reads the project's facts anew, as after an import or another choice of library. The edits stay, and
    /// can be taken back as before. False when they no longer can be: a category that some of them are about
    /// is no more what it was.
    bool RefreshFacts();
    /// The same with facts that are known already; not null.
    bool TakeFacts(ProjectFactsPtr facts);
    /// Never null; empty without a project.
    const ProjectFactsPtr& Facts() const noexcept { return m_facts; }

    // The file
    /// Opens a rule file, or what the module would make where there is none. What was open is closed, with
    /// its edits lost. The rules of the chosen category are there at once; the others of a large file are
    /// read behind the windows (see `Draft`). Raises what `DraftFile` raises; what was open stays
    /// then. Needs a project.
    void Open(const CString& path);
    /// The same with the edits that a former program has left behind, which become one edit that can be
    /// undone. They are written down anew, and the former ones removed. Raises `std::logic_error`, too, for
    /// edits that do not go with what the draft was begun on; nothing has changed then.
    void Recover(const LostDraft& lost);
    /// Closes what is open, with its edits lost.
    void Close();
    bool IsOpen() const noexcept { return m_file != nullptr; }
    /// The open file. Needs `IsOpen`.
    const DraftFile& File() const noexcept { return *m_file; }
    /// Writes the draft into its file (see `DraftFile::Save`). What was merged into it becomes an edit that
    /// can be undone. Needs `IsOpen`.
    DraftFile::SaveEnd Save(const AnswerConflicts& answer, const AskWhetherAnew& mayWriteAnew = {});
    /// Goes back to what the file held when it was opened or saved last; can be undone.
    void Discard();
    /// The same for good: nothing can be undone afterwards.
    void Reset();
    /// Takes over what the file holds now, as after the module's dialogs have written it or another program
    /// has; it becomes an edit that can be undone. False, with nothing done, while the draft has changes of
    /// its own, or when the file cannot be read any more.
    bool TakeOver();

    // The draft
    /// All of it. Waits for what is still being read of the file, and raises what reading it has raised.
    const rules::Draft& Draft() const;
    /// The draft without waiting: of other categories than the chosen one it may have no rules yet, nor know
    /// those that only the file has. For whoever shows the chosen one, and looks again when the others come.
    const rules::Draft& DraftSoFar() const noexcept { return m_draft; }
    /// Whether that is all of it.
    bool IsWhole() const noexcept { return m_isWhole; }
    /// How the file was built when it was read, for the checks. Waits as `Draft` does.
    const rules::FileStructure& Structure() const;
    /// Does an edit, which can be undone from then on. What it has put into the chosen category is chosen,
    /// else the same rules as before; undoing and redoing do so, too. An empty one does nothing. Raises
    /// `std::logic_error` for one of another state.
    void Do(const rules::Edit& edit);
    QUndoStack& Undo() noexcept { return m_undo; }
    /// Whether the draft differs from the file.
    bool IsChanged() const;
    /// Why edits are not written down for the case that the program dies; empty when they are.
    const CString& JournalFault() const noexcept { return m_journalFault; }

    // What is chosen
    const CString& Specialty() const noexcept { return m_specialty; }
    /// The text of the chosen category; empty when none is.
    const CString& CategoryText() const noexcept { return m_category; }
    /// The chosen category in its present state; null when none is.
    rules::SmallCategoryPtr Category() const;
    /// Positions of the chosen rules in their category, rising.
    const std::vector<std::size_t>& ChosenRules() const noexcept { return m_rules; }
    /// The one of them that has the cursor; nothing when none is chosen.
    std::optional<std::size_t> CurrentRule() const noexcept { return m_current; }
    /// All chosen rules, those of other categories included, which a search brings together: what an edit of
    /// several rules at once is about.
    rules::RulePlaces ChosenPlaces() const;

    /// An unknown one changes nothing. The category that was last chosen there is chosen again, else its
    /// first one.
    void ChooseSpecialty(const CString& name);
    /// A category of any specialty; an unknown one changes nothing. Its first rule is chosen.
    void ChooseCategory(const CString& text);
    /// Rules of the chosen category; positions that it has not are left out.
    void ChooseRules(std::vector<std::size_t> positions, std::optional<std::size_t> current);
    /// Rules of several categories, as lines of a search; the cursor is on one of them. Places that the draft
    /// has not are left out.
    void ChoosePlaces(rules::RulePlaces places, const CString& category, std::size_t position);
    /// Goes to a rule wherever it stands.
    void GoTo(const CString& category, std::size_t position);
    /// Goes to a rule that was read elsewhere, or formerly, at that position: to the one with its id,
    /// wherever that stands now. Where several have its id, to the one at the position, else to the first of
    /// them; a default rule, of which a file may have none, goes to the default rule. False when there is
    /// none any more: the category alone is chosen then, if there is one.
    bool GoToRule(const CString& category, const rules::Rule& rule, std::size_t position);

signals:
    /// Another project, file or set of facts: everything is to be looked at again.
    void Reopened();
    /// Something was edited, undone or redone in these categories, and nowhere else.
    void Edited(const QStringList& categories);
    /// The rules of the other categories have come; those of the chosen one are as they were.
    void Completed();
    /// Saved, or what the file holds is known anew: `IsChanged` may be another.
    void FileChanged();
    /// `JournalFault` tells something now that came up behind the windows.
    void JournalFailed();
    void SpecialtyChosen();
    /// Another category; comes before `RulesChosen`.
    void CategoryChosen();
    void RulesChosen();

protected:
    bool event(QEvent* event) override;

private:
    class EditCommand;

    void TakeFile(std::unique_ptr<DraftFile> file);
    void TakeRest() const;
    void TakeOthers(int opened);
    void TellCompleted();
    void NeedCategory(const CString& text) const;
    CString FirstCategory() const;
    void ForgetProposedNumbers();
    void BeginJournal();
    void NoteJournalFault(int journal, const CString& reason);
    bool GoesOnFrom(const rules::Configuration& former) const;
    void FollowFile(const CString& text);
    void Change(const rules::Edit& edit, bool isReverted);
    void FollowRules(const rules::SmallCategoryPtr& former);
    void ChooseInCategory(std::vector<std::size_t> positions, std::optional<std::size_t> current);
    void KeepChoiceValid();
    CString UsualCategory() const;

    Project* m_project = nullptr;
    ProjectFactsPtr m_facts;
    std::unique_ptr<DraftFile> m_file;
    std::unique_ptr<DraftJournal> m_journal;
    CString m_journalFault;
    int m_journals = 0;            ///< how many journals have been begun
    mutable rules::Draft m_draft;  ///< grows by what the file holds besides, when somebody asks for it
    mutable bool m_isWhole = true; ///< it has
    int m_opened = 0;              ///< how many files have been opened
    int m_completed = 0;           ///< the last of them of which `Completed` was told
    QUndoStack m_undo;
    CString m_specialty;
    CString m_category;
    std::map<CString, CString> m_lastCategories; ///< by specialty
    std::vector<std::size_t> m_rules;
    std::optional<std::size_t> m_current;
    rules::RulePlaces m_elsewhere; ///< chosen rules of other categories
};

} // namespace editor
