#pragma once

#include "editor/docks/details/ChosenRules.h"
#include "editor/messages/ErrorBox.h"

#include <QtWidgets/QWidget>

class QAction;
class QLabel;

namespace editor {

class ConditionTable;

/// The upper half of the panel: the conditions of the chosen rules with their commands, and below them why a
/// line makes no condition yet.
class ConditionPart : public QWidget
{
    Q_OBJECT

public:
    /// Both must outlive this. `run` runs what opens a dialog.
    ConditionPart(const ChosenRules& chosen, const StepRunner& run);

    void Refresh();
    ConditionTable& Table() const noexcept { return *m_table; }

signals:
    void Told(const CString& sentence);

private:
    void MakeCommands();
    void ShowState();
    void OpenSeries();

    const ChosenRules& m_chosen;
    const StepRunner& m_run;
    ConditionTable* m_table;
    QLabel* m_fault;
    QAction* m_add = nullptr;
    QAction* m_delete = nullptr;
    QAction* m_series = nullptr;
};

} // namespace editor
