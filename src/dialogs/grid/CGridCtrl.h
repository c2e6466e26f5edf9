#pragma once

#include "dialogs/grid/GridDelegate.h"
#include "dialogs/grid/GridModel.h"
#include "dialogs/grid/GridNotification.h"
#include "platform/Window.h"

#include <QtCore/QPersistentModelIndex>
#include <QtCore/QPointer>
#include <QtWidgets/QTableView>

#include <functional>
#include <optional>

class CGridCtrl;
class GridHeader;

/// A cell of a grid, for what concerns its looks. A handle: it does not keep the cell alive.
class GridCell
{
public:
    GridCell(CGridCtrl& grid, GridCellId id);
    /// The cell's own background, 0x00BBGGRR, in place of the grid's.
    void SetBackClr(std::uint32_t colour) const;
    bool IsSelected() const;

private:
    CGridCtrl* m_grid;
    GridCellId m_id;
};

/// A grid of texts with at most one fixed row and one fixed column. Every operation counts rows and columns
/// from 0 with the fixed ones included, whatever the view underneath counts.
///
/// Mouse and keys select ranges of cells; F2, a double click or typing edits a cell in place or opens its
/// choice list, which the arrow in the cell and Alt+Down do too. A cell of type `Click` opens nothing: F2 and
/// the space bar count as a click on it, so that the keyboard reaches what the mouse reaches. The Tab key
/// leaves the grid.
///
/// The source is divided by concern: `CGridCtrl.cpp` has cells, dimensions and geometry, `CGridCtrlInput.cpp`
/// selection, focus and editing, `CGridCtrlClipboard.cpp` the clipboard.
class CGridCtrl : public QTableView, private IGridCells
{
    Q_OBJECT

public:
    /// Fills the entries of a choice list of a column. The result is not looked at.
    using OptionsFunction = std::function<bool(int column, CStringArray& options)>;

    explicit CGridCtrl(CWnd* parent = nullptr);
    ~CGridCtrl() override;

    /// Makes the control a child of `parent` on `rect`, with `id` in its object name ("id50002"). Always
    /// true.
    bool Create(const CRect& rect, CWnd* parent, int id, GridStyles style);

    // Columns and cell kinds
    void SetDefaultCellType(CellType type);
    /// The types of the first `count` columns; those behind have the default type.
    void SetFmtType(const CellType* types, int count);
    /// The background of data cells, 0x00BBGGRR. Texts on it are black or white, whichever reads better.
    void SetTextBkColor(std::uint32_t colour);
    void SetOptionsFunName(OptionsFunction function);

    // Dimensions; fixed rows and columns are part of the counts. An open edit is dropped.
    void SetRowCount(int count);
    void SetColumnCount(int count);
    void SetFixedRowCount(int count);
    void SetFixedColumnCount(int count);
    int GetRowCount() const;
    int GetColumnCount() const;
    /// Drops all rows and columns, header included.
    void DeleteAllItems();
    /// Drops the data rows, and with them selection and focus cell.
    void DeleteNonFixedRows();
    /// Adds a row in front of `row`, at the end for the row count, and gives its index. `strings` fill the
    /// columns from 1 on; those without a column are dropped. `owner` becomes the item data of the row's
    /// column 0; null gives 0.
    int InsertOneprop(int row, const CStringArray& strings, const void* owner);

    // Cells. Writing outside the grid does nothing and gives false.
    bool SetItem(const GridItem& item);
    bool SetItemText(int row, int col, const CString& text);
    /// The text of a cell, empty outside the grid. An open edit is not part of it before it ends.
    CString GetItemText(int row, int col) const;
    bool SetItemState(int row, int col, unsigned state);
    bool SetItemData(int row, int col, std::intptr_t value);
    /// The integer kept with a cell; 0 at first and outside the grid.
    std::intptr_t GetItemData(int row, int col) const;
    /// Nothing outside the grid.
    std::optional<GridCell> GetCell(int row, int col);
    bool IsValid(int row, int col) const;
    /// Whether the range lies inside the grid, ends in order.
    bool IsValid(const GridRange& range) const;

    // Geometry, in pixels. A font larger than 9 points widens the columns in proportion.
    /// Fits columns and rows to their texts. No `flags` are defined.
    void AutoSize(unsigned flags);
    void SetColumnWidth(int col, int width);
    void SetRowHeight(int row, int height);
    /// The height that the fixed row needs for its captions at the present column widths. What `SetRowHeight`
    /// adds to it is kept when font or widths change.
    int GetFixedRowHeight() const;

    // Selection and focus
    /// The smallest range around the selected cells; not valid when there are none.
    GridRange GetSelectedCellRange() const;
    /// Replaces the selection by a range, cut to the grid; fixed cells can be part of it. `forceRepaint`
    /// paints before it returns. Without `selectCells` the former selection is only dropped.
    void SetSelectedRange(int minRow, int minCol, int maxRow, int maxCol, bool forceRepaint = false,
                          bool selectCells = true);
    bool IsSelected(int row, int col) const;
    /// Makes a cell the focus cell, also a fixed one, and leaves the selection alone. An open edit of another
    /// cell ends and its text is taken over. Outside the grid nothing happens.
    void SetFocusCell(int row, int col);
    /// -1, -1 when no cell has the focus.
    GridCellId GetFocusCell() const;
    void Refresh();

    // Clipboard, as tabbed text that spreadsheets understand
    /// Copies, then empties the selected cells that the user can change.
    void OnEditCut();
    void OnEditCopy() const;
    /// Writes the clipboard's rows from the top left of the selection on. Cells that the user cannot change
    /// are skipped, what falls outside the grid is dropped, and so are characters that no rule file can hold.
    void OnEditPaste();

signals:
    /// Delivered synchronously; the receiver may rebuild the grid.
    void Notify(const GridNotification& notification);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    friend class GridCell;

    bool HasChoices(const QModelIndex& index) const override;
    CStringArray ChoicesOf(const QModelIndex& index) override;
    void EditorOpened(QWidget* editor, const QModelIndex& index) override;
    void ChoiceMade(const QModelIndex& index, const CString& text) override;

    void MakeHeaders();
    void Send(int code, GridCellId cell, const CString& text = {});
    void OnClicked(const QModelIndex& index);
    bool HandleClipboardKey(QKeyEvent* event);
    bool HandleOpeningKey(QKeyEvent* event);
    void CommitEdit();
    void DropEdit();
    void FitHeader();
    void ShowHeaders();
    bool TakesText(int row, int col, const CString& text);
    GridCellId TopLeftOfSelection() const;

    GridModel* m_model;
    GridHeader* m_topHeader = nullptr;
    GridHeader* m_sideHeader = nullptr;
    OptionsFunction m_options;
    QPointer<QWidget> m_editor;
    QPersistentModelIndex m_edited;
    QPoint m_clickPosition;
    double m_widthScale;
    int m_headerPadding = 0;
    /// The selection as far as it reaches into fixed cells, of which the view knows nothing; not valid for
    /// none.
    GridRange m_fixedSelection;
    GridCellId m_fixedFocus;
    /// Set while the program, not the user, moves selection or focus.
    bool m_inCode = false;
};
