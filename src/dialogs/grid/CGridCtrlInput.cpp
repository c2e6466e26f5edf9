#include "dialogs/grid/CGridCtrl.h"

#include "dialogs/grid/GridHeader.h"

#include <QtCore/QScopedValueRollback>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>

#include <algorithm>
#include <utility>

// Selection, focus, editing and notifications.

namespace {

/// The smallest range around both; a range that is not valid counts for nothing.
GridRange Joined(const GridRange& a, const GridRange& b)
{
    if (a.minRow < 0) return b;
    if (b.minRow < 0) return a;
    return {std::min(a.minRow, b.minRow), std::min(a.minCol, b.minCol), std::max(a.maxRow, b.maxRow),
            std::max(a.maxCol, b.maxCol)};
}

} // namespace

GridRange CGridCtrl::GetSelectedCellRange() const
{
    GridRange around = m_fixedSelection;
    for (const QItemSelectionRange& part : selectionModel()->selection()) {
        const GridCellId first = m_model->CellOf(part.topLeft());
        const GridCellId last = m_model->CellOf(part.bottomRight());
        around = Joined(around, {first.row, first.col, last.row, last.col});
    }
    return around;
}

void CGridCtrl::SetSelectedRange(int minRow, int minCol, int maxRow, int maxCol, bool forceRepaint,
                                 bool selectCells)
{
    const QScopedValueRollback<bool> inCode(m_inCode, true);
    const GridRange cut{std::max(minRow, 0), std::max(minCol, 0), std::min(maxRow, GetRowCount() - 1),
                        std::min(maxCol, GetColumnCount() - 1)};
    const bool some = selectCells && IsValid(cut);
    m_fixedSelection = some && m_model->IsFixed(cut.minRow, cut.minCol) ? cut : GridRange();

    QItemSelection cells;
    const QModelIndex first = m_model->IndexOf(std::max(cut.minRow, m_model->FixedRows()),
                                               std::max(cut.minCol, m_model->FixedColumns()));
    const QModelIndex last = m_model->IndexOf(cut.maxRow, cut.maxCol);
    if (some && first.isValid() && last.isValid()) cells.select(first, last);
    selectionModel()->select(cells, QItemSelectionModel::ClearAndSelect);
    Refresh();
    if (forceRepaint) viewport()->repaint();
}

bool CGridCtrl::IsSelected(int row, int col) const
{
    const QModelIndex index = m_model->IndexOf(row, col);
    return index.isValid() ? selectionModel()->isSelected(index) : m_fixedSelection.Contains(row, col);
}

void CGridCtrl::SetFocusCell(int row, int col)
{
    if (!IsValid(row, col) || GetFocusCell() == GridCellId{row, col}) return;
    CommitEdit();
    // The edit's end was notified: the grid may have been rebuilt.
    if (!IsValid(row, col)) return;
    const QScopedValueRollback<bool> inCode(m_inCode, true);
    const QModelIndex index = m_model->IndexOf(row, col);
    m_fixedFocus = index.isValid() ? GridCellId() : GridCellId{row, col};
    if (index.isValid()) {
        // The view's own call also moves the anchor from which Shift extends; it would select the cell alone.
        const QItemSelection kept = selectionModel()->selection();
        setCurrentIndex(index);
        selectionModel()->select(kept, QItemSelectionModel::ClearAndSelect);
    } else {
        selectionModel()->setCurrentIndex({}, QItemSelectionModel::NoUpdate);
    }
}

GridCellId CGridCtrl::GetFocusCell() const
{
    return m_fixedFocus.row >= 0 ? m_fixedFocus : m_model->CellOf(currentIndex());
}

void CGridCtrl::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QTableView::selectionChanged(selected, deselected);
    if (m_inCode) return;
    m_fixedSelection = {};
    Refresh();
}

void CGridCtrl::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTableView::currentChanged(current, previous);
    if (!m_inCode) m_fixedFocus = {};
}

void CGridCtrl::focusInEvent(QFocusEvent* event)
{
    // The view moves to its first cell when it has none; a fixed focus cell must outlast that.
    const GridCellId fixed = m_fixedFocus;
    QTableView::focusInEvent(event);
    if (fixed.row >= 0) SetFocusCell(fixed.row, fixed.col);
}

void CGridCtrl::Send(int code, GridCellId cell, const CString& text)
{
    emit Notify(GridNotification{code, cell.row, cell.col, text});
}

void CGridCtrl::mousePressEvent(QMouseEvent* event)
{
    // A press where no cell is changes nothing in a view that has nothing selected, so a selected header
    // would outlast it.
    m_fixedSelection = {};
    Refresh();
    QTableView::mousePressEvent(event);
}

void CGridCtrl::mouseReleaseEvent(QMouseEvent* event)
{
    m_clickPosition = event->position().toPoint();
    QTableView::mouseReleaseEvent(event);
}

void CGridCtrl::OnClicked(const QModelIndex& index)
{
    const QPersistentModelIndex clicked(index);
    Send(NM_CLICK, m_model->CellOf(index));
    const bool onArrow = clicked.isValid() && HasChoices(clicked) &&
                         GridDelegate::ArrowRect(visualRect(clicked)).contains(m_clickPosition);
    if (onArrow && m_editor.isNull()) edit(clicked);
}

void CGridCtrl::keyPressEvent(QKeyEvent* event)
{
    if (HandleClipboardKey(event) || HandleOpeningKey(event)) {
        event->accept();
        return;
    }
    QTableView::keyPressEvent(event);
}

bool CGridCtrl::HandleClipboardKey(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy)) {
        OnEditCopy();
    } else if (event->matches(QKeySequence::Cut)) {
        OnEditCut();
    } else if (event->matches(QKeySequence::Paste)) {
        OnEditPaste();
    } else {
        return false;
    }
    return true;
}

bool CGridCtrl::HandleOpeningKey(QKeyEvent* event)
{
    const GridCellId cell = GetFocusCell();
    const QModelIndex index = currentIndex();
    if (!index.isValid() || !m_editor.isNull()) return false;
    const bool asClick = event->key() == Qt::Key_F2 || event->key() == Qt::Key_Space;
    if (asClick && m_model->TypeOf(cell.col) == CellType::Click) {
        Send(NM_CLICK, cell);
        return true;
    }
    if (event->key() == Qt::Key_Down && event->modifiers() == Qt::AltModifier && HasChoices(index)) {
        edit(index);
        return true;
    }
    return false;
}

bool CGridCtrl::HasChoices(const QModelIndex& index) const
{
    const GridCellId cell = m_model->CellOf(index);
    const CellType type = m_model->TypeOf(cell.col);
    return (type == CellType::Choice || type == CellType::YesNo) && m_model->IsEditable(cell.row, cell.col);
}

CStringArray CGridCtrl::ChoicesOf(const QModelIndex& index)
{
    CStringArray options;
    if (m_options) m_options(m_model->CellOf(index).col, options);
    return options;
}

void CGridCtrl::EditorOpened(QWidget* editor, const QModelIndex& index)
{
    m_editor = editor;
    m_edited = index;
}

void CGridCtrl::ChoiceMade(const QModelIndex& index, const CString& text)
{
    Send(CellChoiceMade, m_model->CellOf(index), text);
}

void CGridCtrl::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint)
{
    if (editor == nullptr || editor != m_editor) return;
    const QPersistentModelIndex edited = m_edited;
    m_editor.clear();
    m_edited = QModelIndex();
    const bool wasChoice = HasChoices(edited);
    QTableView::closeEditor(editor, QAbstractItemDelegate::NoHint);
    if (hint == QAbstractItemDelegate::EditNextItem) setCurrentIndex(moveCursor(MoveNext, Qt::NoModifier));
    if (hint == QAbstractItemDelegate::EditPreviousItem) {
        setCurrentIndex(moveCursor(MovePrevious, Qt::NoModifier));
    }
    if (wasChoice || !edited.isValid()) return;
    const GridCellId cell = m_model->CellOf(edited);
    Send(LVN_ENDLABELEDIT, cell, GetItemText(cell.row, cell.col));
}

void CGridCtrl::CommitEdit()
{
    if (m_editor.isNull()) return;
    commitData(m_editor);
    closeEditor(m_editor, QAbstractItemDelegate::NoHint);
}

void CGridCtrl::DropEdit()
{
    const QScopedValueRollback<bool> inCode(m_inCode, true);
    QWidget* editor = std::exchange(m_editor, nullptr);
    m_edited = QModelIndex();
    if (editor != nullptr) QTableView::closeEditor(editor, QAbstractItemDelegate::NoHint);
    m_fixedSelection = {};
    m_fixedFocus = {};
}
