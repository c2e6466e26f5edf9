#include "editor/docks/details/ConditionDelegate.h"

#include "editor/docks/details/ConditionTable.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QCompleter>
#include <QtWidgets/QLineEdit>

#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

ConditionDelegate::ConditionDelegate(ConditionTable& table) : RoomyDelegate(table), m_table(table) {}

QComboBox* ConditionDelegate::MakeForms(QWidget* parent, int row) const
{
    auto* combo = new QComboBox(parent);
    const rules::AttributeFacts* const facts =
        FindFacts(m_table.Attributes(), m_table.InputAt(row).attribute);
    const auto& forms = ConditionForms();
    for (std::size_t form = 0; form < forms.size(); ++form) {
        if (facts != nullptr && !facts->allowsRange && !forms[form].IsValue()) continue;
        combo->addItem(forms[form].sign, static_cast<int>(form));
        combo->setItemData(combo->count() - 1, forms[form].words, Qt::ToolTipRole);
        combo->setItemData(combo->count() - 1, forms[form].words, Qt::AccessibleDescriptionRole);
    }
    combo->setCurrentIndex(combo->findData(m_table.InputAt(row).form));
    return combo;
}

QComboBox* ConditionDelegate::MakeList(QWidget* parent, const CStringArray& entries) const
{
    auto* combo = new QComboBox(parent);
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->addItems(entries);
    combo->setCurrentIndex(-1);
    combo->completer()->setFilterMode(Qt::MatchContains);
    combo->completer()->setCompletionMode(QCompleter::PopupCompletion);
    return combo;
}

QWidget* ConditionDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                         const QModelIndex& index) const
{
    const ConditionInput& input = m_table.InputAt(index.row());
    QWidget* editor = nullptr;
    QComboBox* combo = nullptr;
    if (index.column() == ConditionTable::AttributeColumn) {
        CStringArray names;
        for (const rules::AttributeFacts& facts : m_table.Attributes())
            names.append(facts.name);
        editor = combo = MakeList(parent, names);
    } else if (index.column() == ConditionTable::FormColumn) {
        editor = combo = MakeForms(parent, index.row());
    } else if (index.column() == ConditionTable::ValueColumn) {
        const rules::AttributeFacts* const facts = FindFacts(m_table.Attributes(), input.attribute);
        editor = combo = MakeList(parent, facts == nullptr ? CStringArray() : facts->valueList);
    } else {
        editor = new QLineEdit(parent);
    }
    editor->setAccessibleName(m_table.horizontalHeaderItem(index.column())->text());
    // An entry may be chosen by the key that closes the editor anyway, so this comes after it.
    if (combo != nullptr)
        connect(combo, &QComboBox::activated, &m_table, [this, combo] {
            m_done = combo;
            QMetaObject::invokeMethod(
                &m_table, [this, chosen = m_done] { m_table.Finish(chosen); }, Qt::QueuedConnection);
        });
    m_table.Opened(editor);
    return editor;
}

void ConditionDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    const ConditionInput& input = m_table.InputAt(index.row());
    if (auto* combo = qobject_cast<QComboBox*>(editor)) {
        if (!combo->isEditable()) return;
        combo->setEditText(index.column() == ConditionTable::AttributeColumn ? input.attribute : input.first);
        combo->lineEdit()->selectAll();
    } else if (auto* field = qobject_cast<QLineEdit*>(editor)) {
        field->setText(input.second);
    }
}

void ConditionDelegate::setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex& index) const
{
    if (const auto* combo = qobject_cast<QComboBox*>(editor)) {
        if (combo->isEditable())
            m_table.SetCell(index.row(), index.column(), combo->currentText());
        else if (combo->currentIndex() >= 0)
            m_table.SetCell(index.row(), index.column(), combo->currentData().toString());
    } else if (const auto* field = qobject_cast<QLineEdit*>(editor)) {
        m_table.SetCell(index.row(), index.column(), field->text());
    }
}

// Who types fast, or ahead of a busy program, means the table with whatever comes after the choice.
bool ConditionDelegate::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress) return RoomyDelegate::eventFilter(watched, event);
    if (watched == m_done) {
        m_table.Finish(std::exchange(m_done, nullptr));
        QCoreApplication::sendEvent(&m_table, event);
        return true;
    }
    const int key = static_cast<const QKeyEvent&>(*event).key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) m_done = qobject_cast<QWidget*>(watched);
    return RoomyDelegate::eventFilter(watched, event);
}

} // namespace editor
