#pragma once

#include <QtCore/QRect>

namespace embedded {

/// Where a window of `size` stands beside `neighbour`: at its right with the upper edges in line, at its left
/// when there is no room, and against the right edge of the screen when there is none on either side. Never
/// larger than `screen` and never beyond it. All in pixels of the screen, frames included.
QRect PlaceBeside(const QRect& neighbour, const QSize& size, const QRect& screen);

} // namespace embedded
