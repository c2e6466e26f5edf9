#include "widgets/NotifyingStatic.h"

#include <QtGui/QAccessible>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QAccessibleWidget>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionFocusRect>
#include <QtWidgets/QStylePainter>

namespace widgets {

namespace {

/// What assistive technology sees of the text: a link that it can press.
class AccessibleLink : public QAccessibleWidget
{
public:
    explicit AccessibleLink(NotifyingStatic& link) : QAccessibleWidget(&link, QAccessible::Link), m_link(link)
    {
    }

    QString text(QAccessible::Text kind) const override
    {
        const QString own = QAccessibleWidget::text(kind);
        return own.isEmpty() && kind == QAccessible::Name ? m_link.text() : own;
    }

    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (m_link.isEnabled()) names.prepend(pressAction());
        return names;
    }

    // Later, since the handler may open a window and return only when that is closed, and who presses from
    // outside waits for this call.
    void doAction(const QString& name) override
    {
        if (name != pressAction())
            QAccessibleWidget::doAction(name);
        else if (m_link.isEnabled())
            QMetaObject::invokeMethod(
                &m_link, [link = &m_link] { link->Click(); }, Qt::QueuedConnection);
    }

private:
    NotifyingStatic& m_link;
};

/// Null for what is no such link.
QAccessibleInterface* MakeAccessibleLink(const QString&, QObject* object)
{
    auto* link = dynamic_cast<NotifyingStatic*>(object);
    return link == nullptr ? nullptr : new AccessibleLink(*link);
}

} // namespace

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
