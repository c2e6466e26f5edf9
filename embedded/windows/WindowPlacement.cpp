#include "embedded/windows/WindowPlacement.h"

#include <QtGui/QWindow>
#include <QtWidgets/QWidget>

#include <algorithm>

namespace embedded {

QMargins FrameOf(const QWidget& widget)
{
    const QWindow* window = widget.window()->windowHandle();
    return window == nullptr ? QMargins() : window->frameMargins();
}

QRect PlaceBeside(const QRect& neighbour, const QSize& size, int narrowest, const QRect& screen)
{
    const int rightOfNeighbour = neighbour.x() + neighbour.width();
    const int roomAtRight = screen.x() + screen.width() - rightOfNeighbour;
    const int roomAtLeft = neighbour.x() - screen.x();
    QSize fitting = size.boundedTo(screen.size());
    const bool atRight = roomAtRight >= fitting.width() || roomAtRight >= roomAtLeft;
    const int room = std::max(atRight ? roomAtRight : roomAtLeft, narrowest);
    fitting.setWidth(std::min(fitting.width(), room));
    const int rightmost = screen.x() + screen.width() - fitting.width();
    const int lowest = screen.y() + screen.height() - fitting.height();
    const int x = atRight ? rightOfNeighbour : neighbour.x() - fitting.width();
    return {QPoint(std::clamp(x, screen.x(), rightmost), std::clamp(neighbour.y(), screen.y(), lowest)),
            fitting};
}

} // namespace embedded
