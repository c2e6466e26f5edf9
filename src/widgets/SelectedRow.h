#pragma once

class QAbstractItemView;

namespace widgets {

/// From now on the row that is selected in a list of single selection becomes the current one, too. Mouse and
/// keys make it both; an aid for the disabled only selects it, and whoever hears that another row is current
/// would not hear of it. To be called when the view has its model; the current row follows from the event
/// loop, once whatever selects has ended.
void MakeSelectedRowCurrent(QAbstractItemView& view);

} // namespace widgets
