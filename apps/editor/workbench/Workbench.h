#pragma once

#include "editor/session/WorkSession.h"
#include "editor/workbench/DockPage.h"
#include "editor/workbench/RuleCommands.h"
#include "editor/workbench/RuleSearch.h"
#include "editor/workbench/RuleTableModel.h"
#include "editor/workbench/WorkbenchActions.h"

#include <functional>

class QComboBox;
class QLabel;
class QLineEdit;
class QTimer;
class QToolBar;

namespace editor {

class CategoryPanel;
class RuleTable;

/// The page on which the rules of a file are worked on: categories at the left, the rules of the chosen one,
/// or those that a search finds, in the middle, and around them docks that the user arranges. It shows what
/// the session holds and gives it what the user does.
class Workbench : public DockPage
{
public:
    /// What the window around it does.
    struct Wishes
    {
        /// Runs a step of a command: guarded, and alone.
        std::function<void(const std::function<void()>&)> run;
        /// Opens another rule file of the project at the rule that was found in it. May be refused by the
        /// user, and the file may hold something else by now.
        std::function<void(const RuleRow& found)> openFile;
        /// Reads the other rule files of the project, for a search in all of them.
        std::function<std::vector<OtherFile>()> readOthers;
        std::function<void()> save;
        /// Says something in the status bar.
        std::function<void(const QString&)> tell;
    };

    /// `session` must outlive this.
    Workbench(WorkSession& session, Wishes wishes);
    ~Workbench() override;

    const WorkbenchActions& Commands() const noexcept { return m_actions; }
    QAction* UndoAction() const noexcept { return m_undo; }
    QAction* RedoAction() const noexcept { return m_redo; }

    /// What other parts know of rules and categories.
    void SetKnowledge(RuleKnowledge knowledge,
                      std::function<std::optional<rules::Severity>(const CString&)> severities);
    /// What is known has changed: everywhere, or in these categories.
    void KnowledgeChanged(const QStringList& categories = {});
    /// Shows or hides the column of hits.
    void ShowHits(bool show);

    /// Where the user goes to work on the current rule.
    void SetEditor(QWidget* editor) { m_editor = editor; }

    /// Names the open file; empty for none.
    void SetHeading(const QString& configuration, bool isChanged);
    /// Says in the place of the rules why there are none; empty takes it away.
    void ShowNotice(const QString& text);

    /// Looks for this everywhere in a scope, as if it had been typed.
    void Find(const QString& text, SearchScope scope);
    /// Rule files beside the open one may hold something else now: a search in them reads them anew.
    void OtherFilesChanged();
    void FocusRules();
    QWidget* RuleList() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Build();
    QToolBar* MakeTools();
    QToolBar* MakeSearch();
    void Connect();
    void ShowRows();
    void ShowChoice();
    void TakeChoice();
    void EnableActions();
    void ShowCount();
    void PrepareSearch();
    void ScopeChosen();
    void EditCurrent();

    WorkSession& m_session;
    Wishes m_wishes;
    WorkbenchActions m_actions;
    QAction* m_undo;
    QAction* m_redo;
    RuleCommands m_commands;
    RuleSearch m_search;
    RuleTableModel* m_model;
    RuleTable* m_table;
    CategoryPanel* m_categories;
    QLineEdit* m_text;
    QComboBox* m_scope;
    QLabel* m_count;
    QLabel* m_heading;
    QLabel* m_notice;
    QTimer* m_prepare; ///< the search, between events
    QWidget* m_editor = nullptr;
    bool m_isShowing = false;
};

} // namespace editor
