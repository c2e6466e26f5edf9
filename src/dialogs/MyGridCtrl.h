#pragma once

#include "dialogs/grid/CNvGridCtrl.h"

#include <cstdint>
#include <vector>

/// The grid of bill and quota items: one row per item, in five or six columns.
///
/// A row's item data tell what it is: in column 1 its kind, in column 0 the id of its node. In bill mode the
/// quota rows of a bill item stand directly below its row; nothing else ties them to it.
class MyGridCtrl : public CNvGridCtrl
{
    Q_OBJECT

public:
    enum Column : int {
        FixedColumn = 0, ///< shows nothing
        NumberColumn = 1,
        NameColumn = 2,
        UnitColumn = 3,    ///< with a choice list
        FormulaColumn = 4, ///< calculation rule; a click on it is the parent's to act on
        AnnexColumn = 5,   ///< whether fittings count, "是" or "否"; only in the six-column plan
    };
    enum RowKind : int { BillRow = 0, QuotaRow = 1 };

    explicit MyGridCtrl(CWnd* parent = nullptr);
    ~MyGridCtrl() override;

    /// Gives the grid its header row and nothing else: five columns for `attType` 0, otherwise six. The
    /// captions follow the project's mode; raises `host::NoHostError` without a host. Always true.
    bool SetupColumns(std::int32_t attType);
    /// Replaces `options` by the choices of a column, nothing for a column that has none. Always true.
    bool GetUnitOptions(int column, CStringArray& options) const;
    /// Adds a row behind the others and gives it. `texts` fill the columns from the number on; the number
    /// cannot be changed by the user.
    int AppendItem(RowKind kind, int id, const CStringArray& texts);
    /// What a row shows, and the id of its node; `BillRow` and 0 for the header and outside the grid.
    RowKind KindOf(int row) const;
    int IdOf(int row) const;
    /// The bill row that a row belongs to, itself or the nearest above; 0 when there is none.
    int BillRowOf(int row) const;

    /// The selected data row when exactly one row is selected, otherwise -1.
    std::int32_t GetSelectedRow() const;
    /// Replaces `rows` by all rows with a selected cell, bottom row first. A selected header counts as row 0.
    void GetSelectedRows(std::vector<int>& rows);

protected:
    /// Swallows the release of the right button: whatever the grid's bases do on it is never reached.
    void mouseReleaseEvent(QMouseEvent* event) override;

    // State for derived controls; nothing in this module reads it.
    std::int32_t m_reserved = 0;
    std::uint8_t m_flag = 1;
    std::intptr_t m_value = 0;
};
