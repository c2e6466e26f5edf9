#include "DialogUser.h"

#include <QtCore/QTimer>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QTreeWidget>

namespace user {

bool Press(CWnd& window, const QString& caption)
{
    for (auto* button : window.findChildren<QAbstractButton*>()) {
        if (button->text() != caption) continue;
        button->click();
        return true;
    }
    return false;
}

bool SelectCategory(CWnd& dialog, const QString& name)
{
    for (auto* tree : dialog.findChildren<QTreeWidget*>()) {
        for (QTreeWidgetItem* item : tree->findItems(name, Qt::MatchExactly | Qt::MatchRecursive)) {
            tree->setCurrentItem(item);
            return true;
        }
    }
    return false;
}

bool PickTheFirstItem(CWnd& dialog)
{
    for (auto* list : dialog.findChildren<QListWidget*>()) {
        if (!list->isWindow() || !list->isVisible()) continue;
        QTimer::singleShot(0, list,
                           [] { Press(*QApplication::activeModalWidget(), QStringLiteral("确定")); });
        emit list->activated(list->model()->index(0, 0));
        return true;
    }
    return false;
}

} // namespace user
