#include "editor/docks/details/ViewCommands.h"

#include "editor/messages/Guard.h"

#include <QtGui/QAction>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QToolBar>

#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

ViewCommands::ViewCommands(QAbstractItemView& view) : QObject(&view), m_view(view)
{
    view.installEventFilter(this);
    view.setContextMenuPolicy(Qt::ActionsContextMenu);
}

QAction* ViewCommands::Add(const CString& text, const CString& tip, const QKeySequence& key,
                           std::function<void()> run)
{
    const QString keyText = key.toString(QKeySequence::NativeText);
    auto* action = new QAction(key.isEmpty() ? text : text + u'\t' + keyText, this);
    action->setIconText(text);
    action->setToolTip(key.isEmpty() ? tip : u"%1（%2）"_s.arg(tip, keyText));
    action->setStatusTip(tip);
    connect(action, &QAction::triggered, this, [run = std::move(run)] { RunGuarded(run); });
    m_view.addAction(action);
    m_commands.push_back({action, key});
    return action;
}

QToolBar* ViewCommands::MakeToolBar(const CString& name) const
{
    auto* bar = new QToolBar;
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    bar->setAccessibleName(name);
    for (const Command& command : m_commands) {
        bar->addAction(command.action);
        QWidget* const button = bar->widgetForAction(command.action);
        button->setFocusPolicy(Qt::TabFocus);
        button->setAccessibleDescription(command.action->toolTip());
    }
    return bar;
}

QAction* ViewCommands::FindByKey(const QEvent& event) const
{
    const auto& key = static_cast<const QKeyEvent&>(event);
    const QKeySequence pressed(key.key() | (key.modifiers() & ~Qt::KeypadModifier));
    for (const Command& command : m_commands)
        if (!command.key.isEmpty() && command.key == pressed && command.action->isEnabled() &&
            command.action->isVisible())
            return command.action;
    return nullptr;
}

bool ViewCommands::eventFilter(QObject* watched, QEvent* event)
{
    // What is typed into a cell is the cell's.
    if (watched != &m_view || !m_view.hasFocus()) return false;
    if (event->type() == QEvent::ShortcutOverride && FindByKey(*event) != nullptr) {
        event->accept();
        return true;
    }
    if (event->type() != QEvent::KeyPress) return false;
    QAction* const action = FindByKey(*event);
    if (action == nullptr) return false;
    action->trigger();
    return true;
}

} // namespace editor
