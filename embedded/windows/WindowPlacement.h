#pragma once

#include <QtCore/QMargins>
#include <QtCore/QRect>

class QWidget;

namespace embedded {

/// The frame that the window system has put around the window of `widget`, as the window system tells it now;
/// none while there is none yet. The toolkit's `QWidget::frameGeometry` will not do: it keeps the frame of
/// the last time that the window was moved, and a window manager may tell of its frame only after that.
QMargins FrameOf(const QWidget& widget);

/// Where a window of `size` stands beside `neighbour`: at its right with the upper edges in line, or at its
/// left when there is no room. When there is none on either side it becomes narrower, down to
/// `narrowest`, to fit at the side with more room; only what does not fit even then stands over the
/// neighbour, against that edge of the screen. Never larger than `screen` and never beyond it. All in pixels
/// of the screen, frames included.
QRect PlaceBeside(const QRect& neighbour, const QSize& size, int narrowest, const QRect& screen);

} // namespace embedded
