#include "editor/window/CategoryOpener.h"

#include "dialogs/AutoConfigIds.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QTimer>
#include <QtWidgets/QDialog>
#include <QtWidgets/QTreeWidget>

#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

QTreeWidgetItem* ChildNamed(const QTreeWidgetItem& parent, const QString& name)
{
    for (int i = 0; i < parent.childCount(); ++i)
        if (parent.child(i)->text(0) == name) return parent.child(i);
    return nullptr;
}

void Select(QTreeWidget& tree, const CString& category)
{
    QTreeWidgetItem* item = tree.invisibleRootItem();
    for (const CString& name : category.split(u'\\')) {
        item = ChildNamed(*item, name);
        if (item == nullptr) return;
    }
    tree.setCurrentItem(item);
}

} // namespace

CategoryOpener::CategoryOpener(CString category) : m_category(std::move(category))
{
    if (!m_category.isEmpty()) QCoreApplication::instance()->installEventFilter(this);
}

bool CategoryOpener::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Show) return false;
    auto* const dialog = qobject_cast<QDialog*>(watched);
    if (dialog == nullptr) return false;
    const QString name = u"id%1"_s.arg(static_cast<int>(dialogs::autoconfig::CategoryTree));
    auto* const tree = dialog->findChild<QTreeWidget*>(name);
    if (tree == nullptr) return false;
    // Once the dialog has filled its lists and runs.
    QTimer::singleShot(0, tree, [tree, category = m_category] { Select(*tree, category); });
    return false;
}

} // namespace editor
