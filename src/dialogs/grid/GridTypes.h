#pragma once

#include "platform/Text.h"

#include <QtCore/QFlags>

/// The small types in which a grid is spoken to. Rows and columns count from 0, fixed ones included.

/// What a cell offers to the user. The values belong to the columns' format lists.
enum class CellType : int {
    Text = 0,   ///< plain text, edited in place
    Choice = 1, ///< a list of suggestions; the cell may hold and show a text outside it
    Click = 2,  ///< opens nothing itself: the parent acts on the click
    YesNo = 8,  ///< a list outside which the user cannot put a text
};

/// Cell state: the user can change the cell neither by editing nor by the clipboard.
inline constexpr unsigned ReadOnlyState = 8;

/// Which fields of a `GridItem` count.
inline constexpr unsigned GridItemText = 0x01;
inline constexpr unsigned GridItemFormat = 0x40;

/// Bits of a text format. Others are accepted and have no effect.
inline constexpr unsigned GridFormatCenter = 0x001;
inline constexpr unsigned GridFormatWordBreak = 0x010;
inline constexpr unsigned GridFormatNoPrefix =
    0x800; ///< an ampersand is shown; the grid never does otherwise

/// A cell as it is written by `CGridCtrl::SetItem`.
struct GridItem
{
    int row = 0;
    int col = 0;
    unsigned mask = 0;   ///< `GridItemText` and `GridItemFormat`: the fields to write
    unsigned format = 0; ///< the `GridFormat...` bits
    CString text;
};

/// The position of a cell; -1 when there is none.
struct GridCellId
{
    int row = -1;
    int col = -1;
    bool operator==(const GridCellId&) const = default;
};

/// A rectangle of cells, both ends included; all -1 when there is none.
struct GridRange
{
    int minRow = -1;
    int minCol = -1;
    int maxRow = -1;
    int maxCol = -1;
    bool operator==(const GridRange&) const = default;

    bool Contains(int row, int col) const
    {
        return row >= minRow && row <= maxRow && col >= minCol && col <= maxCol;
    }
};

/// How a grid is made.
enum class GridStyle : unsigned {
    Visible = 1,
    Border = 2,
    TabStop = 4, ///< the Tab key reaches the grid
};
Q_DECLARE_FLAGS(GridStyles, GridStyle)
Q_DECLARE_OPERATORS_FOR_FLAGS(GridStyles)
