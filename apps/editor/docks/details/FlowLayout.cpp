#include "editor/docks/details/FlowLayout.h"

#include <QtWidgets/QWidget>

#include <algorithm>

namespace editor {

FlowLayout::FlowLayout(QWidget& place) : QLayout(&place)
{
    setContentsMargins({});
    setSpacing(2);
}

FlowLayout::~FlowLayout() = default;

void FlowLayout::addItem(QLayoutItem* item)
{
    m_items.emplace_back(item);
}

QLayoutItem* FlowLayout::itemAt(int index) const
{
    return index >= 0 && index < count() ? m_items[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index)
{
    if (itemAt(index) == nullptr) return nullptr;
    QLayoutItem* const taken = m_items[static_cast<std::size_t>(index)].release();
    m_items.erase(m_items.begin() + index);
    return taken;
}

int FlowLayout::heightForWidth(int width) const
{
    return Arrange({0, 0, width, 0}, true);
}

QSize FlowLayout::minimumSize() const
{
    QSize size;
    for (const auto& item : m_items)
        size = size.expandedTo(item->minimumSize());
    return size;
}

void FlowLayout::setGeometry(const QRect& place)
{
    QLayout::setGeometry(place);
    Arrange(place, false);
}

int FlowLayout::Arrange(const QRect& place, bool onlyMeasures) const
{
    QPoint corner = place.topLeft();
    int lineHeight = 0;
    for (const auto& item : m_items) {
        if (item->isEmpty()) continue; // hidden
        const QSize size = item->sizeHint();
        if (corner.x() > place.left() && corner.x() + size.width() > place.left() + place.width()) {
            corner = {place.left(), corner.y() + lineHeight + spacing()};
            lineHeight = 0;
        }
        if (!onlyMeasures) item->setGeometry({corner, size});
        corner.rx() += size.width() + spacing();
        lineHeight = std::max(lineHeight, size.height());
    }
    return corner.y() + lineHeight - place.top();
}

} // namespace editor
