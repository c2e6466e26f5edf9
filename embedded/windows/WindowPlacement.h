#pragma once

#include <QtCore/QRect>

namespace embedded {

/// Two windows beside each other.
struct WindowPlaces
{
    QRect window;
    QRect neighbour;
};

/// Where a window of `size` stands beside `neighbour`: at its right with the upper edges in line, or at its
/// left when there is no room. When there is none on either side the neighbour makes way to the left, and
/// where that is not enough the window becomes narrower, down to `narrowest`; only what does not fit even
/// then stands over the neighbour, against the right edge of the screen. The window is never larger than
/// `screen` and never beyond it. All in pixels of the screen, frames included.
WindowPlaces PlaceBeside(const QRect& neighbour, const QSize& size, int narrowest, const QRect& screen);

/// The same beside the window of which `part` is what a person looks at while he works in the other: where
/// that would cover the part, it stands at the side of the part where there is more room instead, over the
/// rest of the window, which stays where it is; there, too, it becomes narrower rather than that it covers
/// the part. A part that has no room of `narrowest` on either side is covered.
WindowPlaces PlaceBesidePart(const QRect& part, const QRect& neighbour, const QSize& size, int narrowest,
                             const QRect& screen);

} // namespace embedded
