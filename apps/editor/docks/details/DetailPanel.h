#pragma once

#include "editor/docks/details/ChosenRules.h"
#include "editor/messages/ErrorBox.h"

#include <QtWidgets/QWidget>

class QLabel;
class QStackedWidget;

namespace editor {

class ConditionPart;
class ItemPart;

/// The rule that is chosen in the session, to be edited: its conditions and its items. When several are
/// chosen, what they share, and edits of all of them at once. Every edit goes through the session and is one
/// step of its undo stack. Its focus is that of the conditions.
class DetailPanel : public QWidget
{
    Q_OBJECT

public:
    /// The session must outlive this. What opens a dialog is run by `run`.
    explicit DetailPanel(WorkSession& session, StepRunner run = &RunGuarded);

    /// Takes over what is being typed, into the rule that it is typed for. To be called before the draft is
    /// saved, undone, or asked whether it has changed: a cell that is still open is not in it. The panel does
    /// so itself when the focus or the choice moves.
    void Commit();

signals:
    /// Something that the user should know of what has just been done, as a sentence. The panel shows it
    /// itself; a status bar may, too.
    void Told(const CString& sentence);

private:
    QWidget* MakeRulePage();
    void LookAgain();
    void OnReopened();
    void ShowHeading();
    void Tell(const CString& sentence);

    ChosenRules m_chosen;
    StepRunner m_run;
    CString m_file; ///< path of the rule file that is open
    QStackedWidget* m_pages;
    QLabel* m_heading;
    QLabel* m_category;
    ConditionPart* m_conditions;
    ItemPart* m_items;
    QLabel* m_told;
    bool m_isCommitting = false;
};

} // namespace editor
