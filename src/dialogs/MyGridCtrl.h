#pragma once

#include "dialogs/CNvGridCtrl.h"

#include <cstdint>
#include <vector>

/// The grid of bill and quota items: one row per item, in five or six columns.
///
/// | Column | Holds |
/// |---|---|
/// | 0 | nothing; fixed |
/// | 1 | number of the item |
/// | 2 | name |
/// | 3 | unit, with a choice list |
/// | 4 | calculation rule; a click on it is the parent's to act on |
/// | 5 | whether fittings count, "是" or "否"; only in the six-column plan |
class MyGridCtrl : public CNvGridCtrl
{
    Q_OBJECT

public:
    explicit MyGridCtrl(CWnd* parent = nullptr);
    ~MyGridCtrl() override;

    /// Gives the grid its header row and nothing else: five columns for `attType` 0, otherwise six. The
    /// captions follow the project's mode; raises `host::NoHostError` without a host. Always true.
    bool SetupColumns(std::int32_t attType);
    /// Replaces `options` by the choices of a column, nothing for a column that has none. Always true.
    bool GetUnitOptions(int column, CStringArray& options) const;
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
