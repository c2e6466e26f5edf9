#include "widgets/TreeControl.h"

#include "widgets/LineColour.h"
#include "widgets/LineDelegate.h"
#include "widgets/UserSelection.h"

#include <QtCore/QItemSelectionModel>
#include <QtCore/QSet>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QHeaderView>

#include <utility>

namespace widgets {

namespace {

class AnnouncingSelection : public QItemSelectionModel
{
public:
    AnnouncingSelection(QAbstractItemModel* model, QObject* parent, std::function<void()> changing)
        : QItemSelectionModel(model, parent), m_changing(std::move(changing))
    {
    }

    using QItemSelectionModel::select;

    void select(const QItemSelection& rows, SelectionFlags command) override
    {
        if (Changes(rows, command)) m_changing();
        QItemSelectionModel::select(rows, command);
    }

private:
    /// A press on an empty place, for one, selects nothing on top of what is selected.
    bool Changes(const QItemSelection& rows, SelectionFlags command) const
    {
        QItemSelection after = command.testFlag(Clear) ? QItemSelection() : selection();
        after.merge(rows, command);
        return Items(after) != Items(selection());
    }
    static QSet<QModelIndex> Items(const QItemSelection& selection)
    {
        const QModelIndexList items = selection.indexes();
        return {items.begin(), items.end()};
    }

    std::function<void()> m_changing;
};

class GridLines : public LineDelegate
{
public:
    using LineDelegate::LineDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        LineDelegate::paint(painter, option, index);
        painter->save();
        painter->setPen(option.palette.color(QPalette::Midlight));
        painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
        painter->drawLine(option.rect.topRight(), option.rect.bottomRight());
        painter->restore();
    }
};

} // namespace

TreeControl::TreeControl(QWidget* parent) : QTreeWidget(parent)
{
    setHeaderHidden(true);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setUniformRowHeights(true);
    setItemDelegate(new LineDelegate(this));
}

void TreeControl::OnSelectionChanging(std::function<void()> handler)
{
    QItemSelectionModel* former = selectionModel();
    auto* announcing = new AnnouncingSelection(model(), this, std::move(handler));
    setSelectionModel(announcing);
    delete former;
    // The tree widget listens only to the selection model that it was made with.
    connect(announcing, &QItemSelectionModel::selectionChanged, this, &QTreeWidget::itemSelectionChanged);
}

QTreeWidgetItem* TreeControl::GetSelectedItem() const
{
    return SelectedItemOf(*this);
}

QItemSelectionModel::SelectionFlags TreeControl::selectionCommand(const QModelIndex& index,
                                                                  const QEvent* event) const
{
    if (!index.isValid()) return QItemSelectionModel::NoUpdate;
    return WithoutDeselection(QTreeWidget::selectionCommand(index, event));
}

// Not every style of the toolkit has lines. The one of an item goes down from above to its height, to the
// right from there, and down again while there is a next item; those of its ancestors pass by.
void TreeControl::drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const
{
    QTreeWidget::drawBranches(painter, rect, index);
    const int half = indentation() / 2;
    const int gap = model()->hasChildren(index) ? half / 2 + 2 : 0; // for the button
    const int middle = rect.center().y();
    int x = rect.right() + 1 - half;
    const auto hasNext = [](const QModelIndex& item) { return item.siblingAtRow(item.row() + 1).isValid(); };
    painter->save();
    painter->setPen(QPen(LineColour(palette(), QPalette::Base, QPalette::Text), 1, Qt::DotLine));
    painter->drawLine(x + gap, middle, rect.right(), middle);
    if (index.parent().isValid() || index.row() > 0) painter->drawLine(x, rect.top(), x, middle - gap);
    if (hasNext(index)) painter->drawLine(x, middle + gap, x, rect.bottom());
    for (QModelIndex above = index.parent(); above.isValid(); above = above.parent()) {
        x -= indentation();
        if (hasNext(above)) painter->drawLine(x, rect.top(), x, rect.bottom());
    }
    painter->restore();
}

// The toolkit would select, or at least give the keyboard's place to, each item that the mouse passes.
void TreeControl::mouseMoveEvent(QMouseEvent* event)
{
    if (!event->buttons().testFlag(Qt::LeftButton)) QTreeWidget::mouseMoveEvent(event);
}

QTreeWidget* MakeReportList(QWidget* parent)
{
    auto* list = new QTreeWidget(parent);
    list->setRootIsDecorated(false);
    list->setItemsExpandable(false);
    list->setAllColumnsShowFocus(true);
    list->setUniformRowHeights(true);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setItemDelegate(new GridLines(list));
    list->header()->setSectionsMovable(false);
    list->header()->setStretchLastSection(false);
    return list;
}

QTreeWidgetItem* SelectedItemOf(const QTreeWidget& tree)
{
    const QList<QTreeWidgetItem*> selected = tree.selectedItems();
    return selected.isEmpty() ? nullptr : selected.first();
}

int DataOf(const QTreeWidgetItem* item)
{
    return item == nullptr ? 0 : item->data(0, Qt::UserRole).toInt();
}

void SetData(QTreeWidgetItem& item, int value)
{
    item.setData(0, Qt::UserRole, value);
}

} // namespace widgets
