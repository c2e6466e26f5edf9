#include "bench/BareDialog.h"

#include "dialogs/AutoConfigIds.h"
#include "dialogs/CAutoConfigDlg.h"
#include "dialogs/template/DialogTemplates.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QTreeWidget>

using namespace dialogs::autoconfig;

namespace bench {

namespace {

/// Pixels of a dialog unit, about what a common font gives.
constexpr int Across = 2;
constexpr int Down = 2;
/// Height of a closed drop list, in dialog units: the table gives that of the open one.
constexpr int ClosedDropList = 12;

QWidget* MakeBare(const dialogs::ControlRow& row, QWidget* parent)
{
    const QString caption = row.caption.toString();
    switch (row.kind) {
    case dialogs::ControlKind::PushButton:
        return new QPushButton(caption, parent);
    case dialogs::ControlKind::GroupBox:
        return new QGroupBox(caption, parent);
    case dialogs::ControlKind::Static:
        return new QLabel(caption, parent);
    case dialogs::ControlKind::Edit:
        return new QLineEdit(parent);
    case dialogs::ControlKind::MultiLineEdit:
        return new QPlainTextEdit(parent);
    case dialogs::ControlKind::ListBox:
        return new QListWidget(parent);
    case dialogs::ControlKind::DropList:
    case dialogs::ControlKind::EditableCombo: {
        auto* combo = new QComboBox(parent);
        combo->setEditable(row.kind == dialogs::ControlKind::EditableCombo);
        return combo;
    }
    case dialogs::ControlKind::RadioButton:
        return new QRadioButton(caption, parent);
    case dialogs::ControlKind::CheckBox:
        return new QCheckBox(caption, parent);
    case dialogs::ControlKind::Tree:
    case dialogs::ControlKind::ReportList:
        return new QTreeWidget(parent);
    case dialogs::ControlKind::Tab:
        return new QTabWidget(parent);
    case dialogs::ControlKind::Frame:
        return new QFrame(parent);
    }
    return nullptr;
}

QStringList TextsOf(const QAbstractItemModel& model)
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row)
        texts.append(model.index(row, 0).data().toString());
    return texts;
}

void CopyTree(const QTreeWidgetItem& from, QTreeWidgetItem& to)
{
    for (int i = 0; i < from.childCount(); ++i)
        CopyTree(*from.child(i), *new QTreeWidgetItem(&to, {from.child(i)->text(0)}));
    to.setExpanded(true);
}

} // namespace

BareDialog::BareDialog()
{
    const dialogs::DialogTemplate& table = dialogs::templates::AutoConfig();
    resize(table.width * Across, table.height * Down);
    for (const dialogs::ControlRow& row : table.rows) {
        QWidget* widget = MakeBare(row, this);
        const bool dropsDown = qobject_cast<QComboBox*>(widget) != nullptr;
        widget->setGeometry(row.rect.x * Across, row.rect.y * Down, row.rect.width * Across,
                            (dropsDown ? ClosedDropList : row.rect.height) * Down);
        widget->setHidden((row.flags & dialogs::Hidden) != 0);
        m_items.insert(row.id, widget);
    }
    m_tree = qobject_cast<QTreeWidget*>(m_items.value(CategoryTree));
    m_rules = qobject_cast<QTreeWidget*>(m_items.value(RuleRows));
    m_rules->setColumnCount(2);
    m_rules->setUniformRowHeights(true);
    m_rules->setRootIsDecorated(false);
    m_grid = new QTableWidget(this);
    m_grid->setGeometry(m_items.value(GridPlace)->geometry());
}

void BareDialog::Copy(const CAutoConfigDlg& original)
{
    const auto& tree = original.Item<QTreeWidget>(CategoryTree);
    CopyTree(*tree.invisibleRootItem(), *m_tree->invisibleRootItem());
    m_category = tree.currentItem()->text(0);
    const auto& rules = original.Item<QTreeWidget>(RuleRows);
    for (int row = 0; row < rules.topLevelItemCount(); ++row)
        m_ruleTexts.append({rules.topLevelItem(row)->text(0), rules.topLevelItem(row)->text(1)});
    for (const int id : {int(Attributes), int(Conditions)})
        m_entries.insert(id, TextsOf(*original.Item<QListWidget>(id).model()));
    for (const int id : {int(ValueCombo), int(LowerBound), int(UpperBound)})
        m_entries.insert(id, TextsOf(*original.Item<QComboBox>(id).model()));
    for (const int id : {int(Attributes), int(Conditions)})
        m_chosen.insert(id, original.Item<QListWidget>(id).currentRow());
    const auto& grid = original.Item<QTableView>(Grid);
    const QAbstractItemModel& cells = *grid.model();
    for (int column = 0; column < cells.columnCount(); ++column) {
        m_headings.append(cells.headerData(column, Qt::Horizontal).toString());
        m_widths.append(grid.columnWidth(column));
    }
    for (int row = 0; row < cells.rowCount(); ++row) {
        m_cells.append(QStringList());
        for (int column = 0; column < cells.columnCount(); ++column)
            m_cells.last().append(cells.index(row, column).data().toString());
    }
}

void BareDialog::Fill()
{
    m_tree->setCurrentItem(m_tree->findItems(m_category, Qt::MatchExactly | Qt::MatchRecursive).value(0));
    QList<QTreeWidgetItem*> rows;
    for (const QStringList& texts : m_ruleTexts)
        rows.append(new QTreeWidgetItem(texts));
    m_rules->addTopLevelItems(rows);
    m_rules->setCurrentItem(rows.value(0));
    for (auto entry = m_entries.cbegin(); entry != m_entries.cend(); ++entry) {
        if (auto* list = qobject_cast<QListWidget*>(m_items.value(entry.key()))) {
            list->addItems(entry.value());
            list->setCurrentRow(m_chosen.value(entry.key()));
        } else {
            qobject_cast<QComboBox*>(m_items.value(entry.key()))->addItems(entry.value());
        }
    }
    m_grid->setRowCount(static_cast<int>(m_cells.size()));
    m_grid->setColumnCount(static_cast<int>(m_headings.size()));
    m_grid->setHorizontalHeaderLabels(m_headings);
    for (int column = 0; column < m_grid->columnCount(); ++column)
        m_grid->setColumnWidth(column, m_widths[column]);
    for (int row = 0; row < m_grid->rowCount(); ++row)
        for (int column = 0; column < m_grid->columnCount(); ++column)
            m_grid->setItem(row, column, new QTableWidgetItem(m_cells[row][column]));
}

void BareDialog::Empty()
{
    m_tree->setCurrentItem(m_tree->topLevelItem(0));
    m_rules->clear();
    for (auto entry = m_entries.cbegin(); entry != m_entries.cend(); ++entry) {
        if (auto* list = qobject_cast<QListWidget*>(m_items.value(entry.key())))
            list->clear();
        else
            qobject_cast<QComboBox*>(m_items.value(entry.key()))->clear();
    }
    m_grid->setRowCount(0);
    m_grid->setColumnCount(0);
}

} // namespace bench
