#include "editor/docks/details/ConditionPart.h"

#include "editor/docks/details/ConditionDelegate.h"
#include "editor/docks/details/ConditionTable.h"
#include "editor/docks/details/SeriesDialog.h"
#include "editor/docks/details/ViewCommands.h"
#include "widgets/FaultColour.h"

#include <QtGui/QAction>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace editor {

ConditionPart::ConditionPart(const ChosenRules& chosen, const StepRunner& run)
    : m_chosen(chosen), m_run(run), m_table(new ConditionTable(chosen)), m_fault(new QLabel)
{
    m_table->setItemDelegate(new ConditionDelegate(*m_table));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    m_fault->setTextFormat(Qt::PlainText);
    m_fault->setWordWrap(true);
    MakeCommands();
    column->addWidget(m_table, 1);
    column->addWidget(m_fault);
    setFocusProxy(m_table);
    connect(m_table, &ConditionTable::Told, this, &ConditionPart::Told);
    connect(m_table, &QTableWidget::itemSelectionChanged, this, &ConditionPart::ShowState);
}

void ConditionPart::MakeCommands()
{
    auto* commands = new ViewCommands(*m_table);
    m_add = commands->Add(u"加条件"_s, u"加一个条件，再选属性、填值"_s, Qt::Key_Insert,
                          [this] { m_table->AddLine(); });
    m_delete =
        commands->Add(u"删条件"_s, u"删除选中的条件"_s, Qt::Key_Delete, [this] { m_table->DeleteLines(); });
    m_series =
        commands->Add(u"系列…"_s, u"按一个属性的各个值，由这条规则生成一组规则"_s,
                      QKeySequence(Qt::CTRL | Qt::Key_Insert), [this] { m_run([this] { OpenSeries(); }); });
    static_cast<QVBoxLayout*>(layout())->addWidget(commands->MakeButtons(u"条件的命令"_s));
}

void ConditionPart::Refresh()
{
    m_table->Refresh();
    ShowState();
}

void ConditionPart::ShowState()
{
    const RulesInView view = m_chosen.Look();
    const bool hasRows = m_table->rowCount() > 0;
    m_add->setEnabled(m_table->CanAdd());
    m_delete->setEnabled(hasRows && m_table->currentRow() >= 0);
    m_series->setEnabled(view.IsSingle());
    m_table->setEnabled(!view.IsEmpty());
    const CString fault = m_table->Fault();
    const bool canDrop = m_table->HasInput();
    CString text = fault;
    if (!fault.isEmpty() && canDrop) text += u"（Esc 放弃这一行）"_s;
    if (fault.isEmpty() && view.IsDefaultAlone()) text = u"默认规则没有条件。"_s;
    m_fault->setText(text);
    m_fault->setVisible(!text.isEmpty());
    widgets::MarkAsFault(*m_fault, !fault.isEmpty());
    m_table->setAccessibleDescription(text);
}

void ConditionPart::OpenSeries()
{
    m_table->Commit();
    const RulesInView view = m_chosen.Look();
    if (!view.IsSingle()) return;
    SeriesDialog dialog(m_chosen.Session(), view.Place(0).category->text, view.Place(0).position,
                        m_table->CurrentAttribute(), window());
    if (dialog.exec() == QDialog::Accepted) emit Told(u"生成了 %1 条规则，已选中"_s.arg(dialog.Count()));
}

} // namespace editor
