#include "editor/window/TypedAhead.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <algorithm>
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

/// The window that has the keyboard instead of a list that is shut, or is about to have it back from the
/// list: the one from which the list was opened.
QWindow* HeirOf(const QWindow& list)
{
    QWindow* const focus = QGuiApplication::focusWindow();
    return focus == nullptr || focus == &list ? list.transientParent() : focus;
}

/// The widget of `window` if it may be the active one: it is seen, and not behind a modal window. Else null.
QWidget* FindActivatable(const QWindow& window)
{
    const QWindow* const modal = QGuiApplication::modalWindow();
    const bool isBehind = modal != nullptr && modal != &window && !modal->isAncestorOf(&window);
    if (isBehind || !window.isVisible()) return nullptr;
    const QWidgetList all = QApplication::topLevelWidgets();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const QWidget* one) { return one->windowHandle() == &window; });
    return found == all.end() ? nullptr : *found;
}

/// Has the toolkit take `window` for the active one, whose widget has the focus; that the window system says
/// so is on its way, behind the keys that were typed before. What the toolkit offers instead of this function
/// asks the window system, and comes too late.
void TakeForActive(const QWindow& window)
{
    QWidget* const widget = FindActivatable(window);
    if (widget == nullptr) return;
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    QApplication::setActiveWindow(widget);
    QT_WARNING_POP
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
    if (window.isVisible() || window.type() != Qt::Popup) return false;
    const QPointer<QWindow> heir = HeirOf(window); // may end with whatever a change of the focus sets off
    if (!heir) return false;
    TakeForActive(*heir);
    if (heir) QCoreApplication::sendEvent(heir, event);
    return true;
}

} // namespace editor
