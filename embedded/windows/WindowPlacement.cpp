#include "embedded/windows/WindowPlacement.h"

#include <algorithm>

namespace embedded {

WindowPlaces PlaceBeside(const QRect& neighbour, const QSize& size, int narrowest, const QRect& screen)
{
    const int screenEnd = screen.x() + screen.width();
    const auto roomAtRight = [&](const QRect& other) { return screenEnd - other.x() - other.width(); };
    WindowPlaces places{QRect({0, 0}, size.boundedTo(screen.size())), neighbour};
    QRect& window = places.window;
    const bool atLeft =
        roomAtRight(neighbour) < window.width() && neighbour.x() - screen.x() >= window.width();
    if (!atLeft) {
        const int room = std::max(screen.width() - neighbour.width(), narrowest);
        window.setWidth(std::min(window.width(), std::max(room, roomAtRight(neighbour))));
        const int missing = std::max(window.width() - roomAtRight(neighbour), 0);
        const int madeWay = std::max(neighbour.x() - missing, screen.x());
        places.neighbour.moveLeft(std::min(neighbour.x(), madeWay));
    }
    const int x = atLeft ? neighbour.x() - window.width() : screenEnd - roomAtRight(places.neighbour);
    const int rightmost = std::max(screenEnd - window.width(), screen.x());
    const int lowest = std::max(screen.y() + screen.height() - window.height(), screen.y());
    window.moveTopLeft({std::clamp(x, screen.x(), rightmost), std::clamp(neighbour.y(), screen.y(), lowest)});
    return places;
}

WindowPlaces PlaceBesidePart(const QRect& part, const QRect& neighbour, const QSize& size, int narrowest,
                             const QRect& screen)
{
    const WindowPlaces beside = PlaceBeside(neighbour, size, narrowest, screen);
    const QPoint way = beside.neighbour.topLeft() - neighbour.topLeft();
    if (!beside.window.intersects(part.translated(way))) return beside;
    const int atLeft = part.x() - screen.x();
    const int atRight = screen.x() + screen.width() - part.x() - part.width();
    const int room = std::max(atLeft, atRight);
    if (room < narrowest) return beside;
    QRect window = beside.window;
    window.setWidth(std::min(size.width(), room));
    window.moveLeft(atLeft >= atRight ? part.x() - window.width() : part.x() + part.width());
    return {window, neighbour};
}

} // namespace embedded
