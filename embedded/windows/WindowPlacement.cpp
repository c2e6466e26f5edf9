#include "embedded/windows/WindowPlacement.h"

#include <algorithm>

namespace embedded {

QRect PlaceBeside(const QRect& neighbour, const QSize& size, const QRect& screen)
{
    const QSize fitting = size.boundedTo(screen.size());
    const int rightmost = screen.x() + screen.width() - fitting.width();
    const int lowest = screen.y() + screen.height() - fitting.height();
    int x = neighbour.x() + neighbour.width();
    if (x > rightmost && neighbour.x() - fitting.width() >= screen.x()) x = neighbour.x() - fitting.width();
    return {QPoint(std::clamp(x, screen.x(), rightmost), std::clamp(neighbour.y(), screen.y(), lowest)),
            fitting};
}

} // namespace embedded
