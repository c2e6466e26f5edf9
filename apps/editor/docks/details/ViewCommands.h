#pragma once

#include "platform/Text.h"

#include <QtCore/QObject>
#include <QtGui/QKeySequence>

#include <functional>
#include <vector>

class QAbstractItemView;
class QAction;
class QWidget;

namespace editor {

/// The commands of a list: buttons above it, its context menu, and keys. The keys count while the list has
/// the focus, and then before the shortcuts of the window, which may have the same ones for something else.
/// What a command raises is shown in a box.
class ViewCommands : public QObject
{
public:
    /// The view owns this.
    explicit ViewCommands(QAbstractItemView& view);

    /// `text` is that of the button, `tip` says what the command does.
    QAction* Add(const CString& text, const CString& tip, const QKeySequence& key, std::function<void()> run);
    /// The buttons, for the owner to place, in as many lines as they need.
    QWidget* MakeButtons(const CString& name) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Command
    {
        QAction* action;
        QKeySequence key;
    };

    QAction* FindByKey(const QEvent& event) const;
    bool OpensCell(const QEvent& event) const;

    QAbstractItemView& m_view;
    std::vector<Command> m_commands;
};

} // namespace editor
