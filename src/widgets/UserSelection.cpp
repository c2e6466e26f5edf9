#include "widgets/UserSelection.h"

namespace widgets {

QItemSelectionModel::SelectionFlags WithoutDeselection(QItemSelectionModel::SelectionFlags command)
{
    return command.testFlag(QItemSelectionModel::Deselect) ? QItemSelectionModel::NoUpdate : command;
}

} // namespace widgets
