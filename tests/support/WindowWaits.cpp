#include "support/WindowWaits.h"

#include "support/Patience.h"

#include <QtGui/QAccessible>
#include <QtGui/QWindow>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QWidget>

#include <stdexcept>

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

void SelectByAid(QTreeView& list, const QModelIndex& index)
{
    int row = 0;
    for (QModelIndex above = list.indexAbove(index); above.isValid(); above = list.indexAbove(above))
        ++row;
    QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(&list);
    if (told == nullptr || told->tableInterface() == nullptr || !told->tableInterface()->selectRow(row))
        throw std::runtime_error("the list lets no aid select the row");
}

} // namespace test
