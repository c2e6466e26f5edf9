#pragma once

#include "platform/Text.h"

/// The codes of `GridNotification`.
enum GridNotificationCode : int {
    LVN_ENDLABELEDIT = -176, ///< an in-place edit ended, by taking the text over or by Escape
    NM_CLICK = -2,           ///< a cell was clicked, fixed cells included
    CellChoiceMade = 1,      ///< an entry of a cell's choice list was chosen
};

/// What a grid tells its parent. Delivered inside the event that caused it, so the parent may ask the grid
/// about everything.
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
