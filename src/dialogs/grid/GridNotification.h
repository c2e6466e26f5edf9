#pragma once

#include "platform/Text.h"

// The codes of `GridNotification`. Two of them are macros of <commctrl.h>, with the same values; where that
// was included before, its macros serve.

#ifndef LVN_ENDLABELEDIT
/// An in-place edit ended, by taking the text over or by Escape.
inline constexpr int LVN_ENDLABELEDIT = -176;
#endif
#ifndef NM_CLICK
/// A cell was clicked, fixed cells included.
inline constexpr int NM_CLICK = -2;
#endif
/// An entry of a cell's choice list was chosen.
inline constexpr int CellChoiceMade = 1;

/// What a grid tells its parent. Delivered inside the event that caused it, so the parent may ask the grid
/// about everything. Of a cut and a paste the parent is told nothing.
///
/// When an edit has ended the text taken over already stands in the cell. A choice is only announced: the
/// cell keeps its text until the parent writes the chosen one, so a parent that ignores the code refuses the
/// choice.
struct GridNotification
{
    int code = 0;
    int row = -1;
    int column = -1;
    CString text; ///< the chosen text, or the cell's text after an edit; empty for a click
};
