#include "editor/docks/details/ViewCommands.h"

#include "editor/docks/details/FlowLayout.h"
#include "editor/messages/ErrorBox.h"

#include <QtGui/QAction>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QToolButton>

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

QWidget* ViewCommands::MakeButtons(const CString& name) const
{
    auto* place = new QWidget;
    place->setAccessibleName(name);
    auto* flow = new FlowLayout(*place);
    for (const Command& command : m_commands) {
        auto* button = new QToolButton;
        button->setDefaultAction(command.action);
        button->setToolButtonStyle(Qt::ToolButtonTextOnly);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
        button->setAccessibleDescription(command.action->toolTip());
        // The toolkit shows and hides the buttons of a tool bar with their actions, and no others.
        connect(command.action, &QAction::visibleChanged, button,
                [button, action = command.action] { button->setVisible(action->isVisible()); });
        flow->addWidget(button);
    }
    return place; // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): the layout belongs to it
}

QAction* ViewCommands::FindByKey(const QEvent& event) const
{
    const auto& key = static_cast<const QKeyEvent&>(event);
    const QKeySequence pressed(
        QKeyCombination(key.modifiers() & ~Qt::KeypadModifier, static_cast<Qt::Key>(key.key())));
    for (const Command& command : m_commands)
        if (!command.key.isEmpty() && command.key == pressed && command.action->isEnabled() &&
            command.action->isVisible())
            return command.action;
    return nullptr;
}

/// F2 is a command of the window, too, and means the cell here.
bool ViewCommands::OpensCell(const QEvent& event) const
{
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.key() == Qt::Key_F2 && key.modifiers() == Qt::NoModifier && m_view.currentIndex().isValid();
}

bool ViewCommands::eventFilter(QObject* watched, QEvent* event)
{
    // What is typed into a cell is the cell's.
    if (watched != &m_view || !m_view.hasFocus()) return false;
    if (event->type() == QEvent::ShortcutOverride && (FindByKey(*event) != nullptr || OpensCell(*event))) {
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
