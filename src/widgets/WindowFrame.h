#pragma once

#include <QtCore/QMargins>
#include <QtCore/QRect>

#include <functional>

class QMessageBox;
class QWidget;

/// What the window system puts around windows.
namespace widgets {

/// Whether margins can be those of a frame that stands. Where a window manager has not told yet, the toolkit
/// measures, and a frame that is only being made is smaller than what it is to hold, or has no bar for the
/// title yet.
bool IsMadeFrame(const QMargins& margins);

/// The frame around the window of `widget`, as the window system tells it now; none while there is none yet.
/// The toolkit's `QWidget::frameGeometry` will not do: it keeps the frame of the last time that the window
/// was moved, and a window manager may tell of its frame only after that.
QMargins FrameOf(const QWidget& widget);

/// Where the window of `widget` stands with that frame, in pixels of the screen.
QRect OuterGeometry(const QWidget& widget);

/// Moves a window so that the upper left corner of its frame comes there. The toolkit's `QWidget::move` alone
/// leaves a frame out that the window system told of late.
void MoveFrameTo(QWidget& window, const QPoint& corner);

/// Runs `handler` once, when the window system has told of the frame of `window`. Some put it around a window
/// only when that is shown, and then tell. Nothing happens once the user has acted in the window, which must
/// not move under the mouse; nor for a window without a frame or without a handle, which `QWidget::create`
/// gives it.
void WhenFrameIsKnown(QWidget& window, std::function<void()> handler);

/// The place of the upper left corner of a window of `size` in the middle of `outer`, frames included. Halves
/// are cut off one by one, as hosts do it.
QPoint CentredOn(const QRect& outer, const QSize& size);

/// Makes a message box so wide that its caption can be read whole beside the icon and the buttons that a
/// title bar has. For a box that has all its buttons.
void MakeRoomForCaption(QMessageBox& box);

} // namespace widgets
