#include "editor/steps/BusyCursor.h"

#include <QtCore/QEvent>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QWidget>

namespace editor {

BusyCursor::BusyCursor()
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

BusyCursor::~BusyCursor()
{
    QGuiApplication::restoreOverrideCursor();
}

BusyUntilWindow::BusyUntilWindow() : m_cursor(std::in_place)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool BusyUntilWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && watched->isWidgetType() &&
        static_cast<QWidget*>(watched)->isWindow()) {
        m_cursor.reset();
        QCoreApplication::instance()->removeEventFilter(this);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace editor
