#include "widgets/NotifyingStatic.h"

#include "widgets/AccessibleLink.h"

#include <QtGui/QAccessible>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionFocusRect>
#include <QtWidgets/QStylePainter>

namespace widgets {

NotifyingStatic::NotifyingStatic(QWidget* parent) : QLabel(parent)
{
    QAccessible::installFactory(MakeAccessibleLink); // once, however often it is called
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
}

void NotifyingStatic::Click()
{
    if (m_clicked) m_clicked();
}

void NotifyingStatic::mouseReleaseEvent(QMouseEvent* event)
{
    const bool inside = rect().contains(event->position().toPoint());
    if (event->button() == Qt::LeftButton && inside) Click();
}

void NotifyingStatic::keyPressEvent(QKeyEvent* event)
{
    const bool clicks =
        event->key() == Qt::Key_Space || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (clicks)
        Click();
    else
        QLabel::keyPressEvent(event);
}

void NotifyingStatic::focusInEvent(QFocusEvent* event)
{
    QLabel::focusInEvent(event);
    update();
}

void NotifyingStatic::focusOutEvent(QFocusEvent* event)
{
    QLabel::focusOutEvent(event);
    update();
}

void NotifyingStatic::paintEvent(QPaintEvent* event)
{
    QLabel::paintEvent(event);
    if (!hasFocus()) return;
    QStyleOptionFocusRect option;
    option.initFrom(this);
    QStylePainter(this).drawPrimitive(QStyle::PE_FrameFocusRect, option);
}

} // namespace widgets
