#include "support/WindowWaits.h"

#include "support/Patience.h"

#include <QtGui/QWindow>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QWidget>

using namespace Qt::StringLiterals;

namespace test {

void WaitUntilActive(QWidget& window)
{
    WaitInLoopFor(u"active window "_s + window.windowTitle(), [&window] {
        return window.windowHandle() != nullptr && window.windowHandle()->isActive();
    });
}

QStringList ButtonsWithoutTip(const QWidget& window)
{
    QStringList without;
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>())
        if (!button->text().isEmpty() && button->toolTip().isEmpty()) without.append(button->text());
    return without;
}

} // namespace test
