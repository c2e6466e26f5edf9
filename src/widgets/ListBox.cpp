#include "widgets/ListBox.h"

#include "widgets/LineDelegate.h"
#include "widgets/UserSelection.h"

#include <utility>

namespace widgets {

ListBox::ListBox(QWidget* parent) : QListWidget(parent)
{
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setItemDelegate(new LineDelegate(this));
}

void ListBox::OnSelected(std::function<void()> handler)
{
    // Assistive technology takes one selection away before it makes another.
    connect(this, &QListWidget::itemSelectionChanged, this, [this, handler = std::move(handler)] {
        if (!selectedItems().isEmpty()) handler();
    });
}

QItemSelectionModel::SelectionFlags ListBox::selectionCommand(const QModelIndex& index,
                                                              const QEvent* event) const
{
    return WithoutDeselection(QListWidget::selectionCommand(index, event));
}

} // namespace widgets
