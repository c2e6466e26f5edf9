#pragma once

#include <QtCore/QItemSelectionModel>

namespace widgets {

/// What a click or a key is to do in a list in which the user can select another item, but not none:
/// `command`, the toolkit's answer, unless it takes a selection away. The toolkit does that at a click with
/// Ctrl.
QItemSelectionModel::SelectionFlags WithoutDeselection(QItemSelectionModel::SelectionFlags command);

} // namespace widgets
