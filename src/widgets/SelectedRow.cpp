#include "widgets/SelectedRow.h"

#include <QtCore/QItemSelectionModel>
#include <QtWidgets/QAbstractItemView>

namespace widgets {

namespace {

void Follow(const QAbstractItemView& view)
{
    const QModelIndexList selected = view.selectionModel()->selectedIndexes();
    if (selected.isEmpty()) return;
    const QModelIndex row = selected.first().siblingAtColumn(0);
    if (row != view.currentIndex().siblingAtColumn(0))
        view.selectionModel()->setCurrentIndex(row, QItemSelectionModel::NoUpdate);
}

} // namespace

// Queued: mouse and keys, too, select first, and only then is the row the current one.
void MakeSelectedRowCurrent(QAbstractItemView& view)
{
    QObject::connect(
        view.selectionModel(), &QItemSelectionModel::selectionChanged, &view, [&view] { Follow(view); },
        Qt::QueuedConnection);
}

} // namespace widgets
