#pragma once

#include "editor/docks/details/ChosenRules.h"
#include "editor/docks/details/ItemPickers.h"
#include "editor/docks/details/ItemTree.h"
#include "editor/messages/ErrorBox.h"
#include "host/Records.h"

#include <QtWidgets/QWidget>

#include <optional>

class QAction;
class QLabel;

namespace host {
class UserMessage;
}

namespace editor {

/// The lower half of the panel: the items of the chosen rules with their commands. It receives what is picked
/// in the host's pickers, and runs the host's calculator and the dialog for bill numbers.
class ItemPart : public QWidget
{
    Q_OBJECT

public:
    /// Both must outlive this. `run` runs what opens a dialog.
    ItemPart(const ChosenRules& chosen, const StepRunner& run);

    void Refresh();
    /// To be called when the project, its mode or its libraries may be others.
    void ForgetPickers();
    ItemTree& Tree() const noexcept { return *m_tree; }

signals:
    void Told(const CString& sentence);

protected:
    bool event(QEvent* event) override;

private:
    /// What the next pick is to take the place of.
    struct Replaced
    {
        CString number;
        bool isBill = true;
        ChosenRules::Name rules;
    };

    void MakeCommands();
    QWidget* MakeReplaceLine();
    void ShowState();
    void ShowPicker();
    void BeginReplace();
    void EndReplace();
    void Take(host::UserMessage& message);
    void TakeBill(const CString& picked);
    void TakeQuota(const SPickedDe& picked);
    void AddQuota(const DeStruct& record);
    std::optional<int> BillForQuotas(const RulesInView& view) const;
    CString FormulaFor(const CString& ruleOfItem);
    rules::RulePlaces Places() const;
    void TellChanged(std::size_t rules, const CString& what);
    void EditFormula();

    const ChosenRules& m_chosen;
    const StepRunner& m_run;
    ItemPickers m_pickers;
    std::optional<Replaced> m_replaced;
    ItemTree* m_tree;
    QWidget* m_replaceLine = nullptr;
    QLabel* m_replaceText = nullptr;
    QAction* m_addBill = nullptr;
    QAction* m_addQuota = nullptr;
    QAction* m_formula = nullptr;
    QAction* m_replace = nullptr;
    QAction* m_delete = nullptr;
    QAction* m_up = nullptr;
    QAction* m_down = nullptr;
};

} // namespace editor
