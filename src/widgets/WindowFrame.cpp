#include "widgets/WindowFrame.h"

#include <QtGui/QWindow>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QMessageBox>

namespace widgets {

QMargins FrameOf(const QWidget& widget)
{
    const QWindow* window = widget.window()->windowHandle();
    return window == nullptr ? QMargins() : window->frameMargins();
}

QRect OuterGeometry(const QWidget& widget)
{
    return widget.window()->geometry().marginsAdded(FrameOf(widget));
}

void MoveFrameTo(QWidget& window, const QPoint& corner)
{
    window.move(corner);
    if (QWindow* handle = window.windowHandle()) handle->setFramePosition(corner);
}

QPoint CentredOn(const QRect& outer, const QSize& size)
{
    return {outer.width() / 2 - size.width() / 2 + outer.left(),
            outer.height() / 2 - size.height() / 2 + outer.top()};
}

// Title bars are often bold, and the height of a line is about the width of one of their buttons.
void MakeRoomForCaption(QMessageBox& box)
{
    constexpr int Buttons = 6;
    QFont bold = box.font();
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    const int width = metrics.horizontalAdvance(box.windowTitle()) + Buttons * metrics.height();
    auto* grid = qobject_cast<QGridLayout*>(box.layout());
    if (grid == nullptr) return;
    auto* room = new QSpacerItem(width, 0, QSizePolicy::Minimum, QSizePolicy::Minimum);
    grid->addItem(room, grid->rowCount(), 0, 1, grid->columnCount());
}

} // namespace widgets
