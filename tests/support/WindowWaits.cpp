#include "support/WindowWaits.h"

#include "support/Patience.h"

#include <QtGui/QWindow>
#include <QtWidgets/QWidget>

using namespace Qt::StringLiterals;

namespace test {

void WaitUntilActive(QWidget& window)
{
    WaitInLoopFor(u"active window "_s + window.windowTitle(), [&window] {
        return window.windowHandle() != nullptr && window.windowHandle()->isActive();
    });
}

} // namespace test
