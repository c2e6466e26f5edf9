#include "editor/window/TypedAhead.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>

#include <utility>

namespace editor {

namespace {

bool IsKey(const QEvent& event)
{
    return event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease ||
           event.type() == QEvent::ShortcutOverride;
}

bool IsListOpen()
{
    return QApplication::activePopupWidget() != nullptr;
}

} // namespace

TypedAhead::TypedAhead()
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool TypedAhead::eventFilter(QObject* watched, QEvent* event)
{
    if (!watched->isWindowType() || !IsKey(*event)) return false;
    if (event->type() == QEvent::ShortcutOverride) m_listWasOpen = IsListOpen();
    if (event->type() == QEvent::KeyPress && std::exchange(m_listWasOpen, false) && !IsListOpen())
        return true;
    const auto& window = static_cast<const QWindow&>(*watched);
    QWindow* const focus = QGuiApplication::focusWindow();
    if (window.isVisible() || window.type() != Qt::Popup || focus == nullptr || focus == &window)
        return false;
    QCoreApplication::sendEvent(focus, event);
    return true;
}

} // namespace editor
