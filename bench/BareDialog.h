#pragma once

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QStringList>
#include <QtWidgets/QDialog>

class CAutoConfigDlg;
class QTableWidget;
class QTreeWidget;

namespace bench {

/// What a dialog costs whatever stands behind it: the toolkit's plain widgets, as many and of the same kinds
/// as the configuration dialog has, without any of its behaviour.
class BareDialog : public QDialog
{
public:
    BareDialog();

    /// Remembers what `original` shows now: tree, rules, lists, drop lists and grid.
    void Copy(const CAutoConfigDlg& original);
    /// Shows what was remembered: selects in the tree, then fills the others and selects in them.
    void Fill();
    /// Takes the texts out again and selects another item of the tree.
    void Empty();

private:
    QHash<int, QWidget*> m_items;
    QTreeWidget* m_tree = nullptr;
    QTreeWidget* m_rules = nullptr;
    QTableWidget* m_grid = nullptr;
    QString m_category;
    QList<QStringList> m_ruleTexts;
    QHash<int, QStringList> m_entries; ///< of list boxes and drop lists, by control
    QHash<int, int> m_chosen;          ///< the selected lines of list boxes
    QStringList m_headings;            ///< of the grid
    QList<int> m_widths;
    QList<QStringList> m_cells;
};

} // namespace bench
