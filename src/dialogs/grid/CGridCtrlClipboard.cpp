#include "dialogs/grid/CGridCtrl.h"

#include "dialogs/grid/GridText.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

// The clipboard commands.

void CGridCtrl::OnEditCut()
{
    OnEditCopy();
    const GridRange range = GetSelectedCellRange();
    if (!IsValid(range)) return;
    for (int row = range.minRow; row <= range.maxRow; ++row) {
        for (int col = range.minCol; col <= range.maxCol; ++col) {
            if (IsSelected(row, col) && TakesText(row, col, {})) SetItemText(row, col, {});
        }
    }
}

void CGridCtrl::OnEditCopy() const
{
    const GridRange range = GetSelectedCellRange();
    if (!IsValid(range)) return;
    CArray<CStringArray> rows;
    for (int row = range.minRow; row <= range.maxRow; ++row) {
        CStringArray cells;
        for (int col = range.minCol; col <= range.maxCol; ++col) {
            cells += IsSelected(row, col) ? GetItemText(row, col) : CString();
        }
        rows += cells;
    }
    QGuiApplication::clipboard()->setText(grid::ToTabbedText(rows));
}

void CGridCtrl::OnEditPaste()
{
    const GridCellId start = TopLeftOfSelection();
    if (!IsValid(start.row, start.col)) return;
    CommitEdit();
    int row = start.row;
    for (const CStringArray& cells : grid::FromTabbedText(QGuiApplication::clipboard()->text())) {
        int col = start.col;
        for (const CString& cell : cells) {
            const CString text = grid::WithoutForbidden(cell);
            if (TakesText(row, col, text)) SetItemText(row, col, text);
            ++col;
        }
        ++row;
    }
}

GridCellId CGridCtrl::TopLeftOfSelection() const
{
    const GridRange range = GetSelectedCellRange();
    return IsValid(range) ? GridCellId{range.minRow, range.minCol} : GetFocusCell();
}

/// Whether the clipboard may put `text` into a cell. A cell of type `Click` takes it: only its editing is the
/// parent's.
bool CGridCtrl::TakesText(int row, int col, const CString& text)
{
    const GridModel::Cell* cell = m_model->Find(row, col);
    if (cell == nullptr || m_model->IsFixed(row, col) || (cell->state & ReadOnlyState) != 0) return false;
    return m_model->TypeOf(col) != CellType::YesNo || ChoicesOf(m_model->IndexOf(row, col)).contains(text);
}
