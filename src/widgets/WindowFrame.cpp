#include "widgets/WindowFrame.h"

#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtGui/QWindow>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QMessageBox>

#include <utility>

namespace widgets {

namespace {

/// Ends itself when it is over, at the latest with the handle.
class FrameWait : public QObject
{
public:
    FrameWait(QWidget& window, QWindow& handle, std::function<void()> handler)
        : QObject(&handle), m_window(&window), m_handler(std::move(handler))
    {
        handle.installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        const QEvent::Type type = event->type();
        if (type == QEvent::MouseButtonPress || type == QEvent::KeyPress) {
            m_isOver = true;
            deleteLater();
        } else if (!m_isOver && m_window && !FrameOf(*m_window).isNull()) {
            m_isOver = true;
            // After the event, which may tell the toolkit of the window's place.
            QMetaObject::invokeMethod(
                this, [this] { End(); }, Qt::QueuedConnection);
        }
        return false;
    }

private:
    void End()
    {
        if (m_window) m_handler();
        deleteLater();
    }

    QPointer<QWidget> m_window;
    std::function<void()> m_handler;
    bool m_isOver = false;
};

} // namespace

bool IsMadeFrame(const QMargins& margins)
{
    return margins.left() >= 0 && margins.top() > 0 && margins.right() >= 0 && margins.bottom() >= 0;
}

QMargins FrameOf(const QWidget& widget)
{
    const QWindow* window = widget.window()->windowHandle();
    const QMargins frame = window == nullptr ? QMargins() : window->frameMargins();
    return IsMadeFrame(frame) ? frame : QMargins();
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

void WhenFrameIsKnown(QWidget& window, std::function<void()> handler)
{
    if (QWindow* handle = window.windowHandle()) new FrameWait(window, *handle, std::move(handler));
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
