#pragma once

#include "editor/session/DraftFile.h"
#include "rules/bill/BillBuilder.h"
#include "rules/check/CheckFacts.h"
#include "rules/draft/Draft.h"
#include "rules/draft/RuleEdits.h"
#include "rules/sheet/SheetItems.h"

#include <QtCore/QObject>
#include <QtGui/QUndoStack>

#include <memory>
#include <optional>
#include <vector>

namespace editor {

class Project;

/// What the catalogue and the libraries of the project say, as plain values that nothing changes. May be read
/// on any thread.
struct ProjectFacts
{
    bool isBillMode = true;
    rules::ConfigurationPtr offered;   ///< the host's categories; see `rules::Draft`
    rules::CatalogueFacts attributes;  ///< that the editor offers for each category
    rules::PricingFacts pricing;
    rules::CheckFacts checks;

    /// The attributes of a category; empty when it is not offered.
    const rules::CategoryFacts& AttributesOf(const CString& category) const;
};
using ProjectFactsPtr = std::shared_ptr<const ProjectFacts>;

/// What the parts of the workbench work on together: the draft of one rule file, what is chosen in it, and
/// what the project knows. Its owner opens files and ends it; every part of the workbench reads it, asks it
/// for edits, and looks again when it signals. To be used on the thread of the windows; every signal comes
/// when the new state stands.
class WorkSession : public QObject
{
    Q_OBJECT

public:
    explicit WorkSession(QObject* parent = nullptr);
    ~WorkSession() override;

    /// Works on that project from now on; null for none. What was open is closed. The project must outlive
    /// this or be taken away before.
    void SetProject(Project* project);
    Project* OpenedProject() const noexcept { return m_project; }
    /// Reads the project's facts anew, as after an import or another choice of library; the draft stays.
    void RefreshFacts();
    /// Never null; empty without a project.
    const ProjectFactsPtr& Facts() const noexcept { return m_facts; }

    // The file (see DraftFile)
    /// Opens a rule file that can be read; see `DraftFile::Open`. What was open is closed.
    void Open(const CString& path);
    void Close();
    bool IsOpen() const noexcept { return m_file != nullptr; }
    /// The open file. Needs `IsOpen`.
    DraftFile& File() noexcept { return *m_file; }

    // The draft
    const rules::Draft& Draft() const noexcept { return m_draft; }
    /// What the file was built like when it was read, for the checks.
    const rules::FileStructure& Structure() const noexcept;
    /// Does an edit, which can be undone from then on. An empty one does nothing. Chooses what it has put in.
    void Do(const rules::Edit& edit);
    QUndoStack& Undo() noexcept { return m_undo; }
    /// Whether the draft differs from the file.
    bool IsChanged() const;

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

    void ChooseSpecialty(const CString& name);
    /// A category of any specialty; an unknown one changes nothing.
    void ChooseCategory(const CString& text);
    /// Rules of the chosen category; positions that it has not are left out.
    void ChooseRules(std::vector<std::size_t> positions, std::optional<std::size_t> current);
    /// Goes to a rule wherever it stands.
    void GoTo(const CString& category, std::size_t position);

signals:
    /// Another project, file or set of facts: everything is to be looked at again.
    void Reopened();
    /// Something was edited, undone or redone in these categories, and nowhere else.
    void Edited(const CStringArray& categories);
    /// Saved, or what the file holds is known anew: `IsChanged` may be another.
    void FileChanged();
    void SpecialtyChosen();
    void CategoryChosen();
    void RulesChosen();

private:
    friend class EditCommand;

    void Show(const rules::Edit& edit, bool reverted);
    void KeepChoiceValid();

    Project* m_project = nullptr;
    ProjectFactsPtr m_facts;
    std::unique_ptr<DraftFile> m_file;
    rules::Draft m_draft;
    QUndoStack m_undo;
    CString m_specialty;
    CString m_category;
    std::vector<std::size_t> m_rules;
    std::optional<std::size_t> m_current;
};

} // namespace editor
