#include "widgets/AccessibleLink.h"

#include "widgets/NotifyingStatic.h"

#include <QtWidgets/QAccessibleWidget>

namespace widgets {

namespace {

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

} // namespace

QAccessibleInterface* MakeAccessibleLink(const QString&, QObject* object)
{
    auto* link = dynamic_cast<NotifyingStatic*>(object);
    return link == nullptr ? nullptr : new AccessibleLink(*link);
}

} // namespace widgets
