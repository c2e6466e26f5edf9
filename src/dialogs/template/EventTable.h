#pragma once

#include "platform/Text.h"

#include <functional>
#include <map>
#include <utility>

namespace dialogs {

enum class DialogEvent {
    Command,               ///< a button, radio button, check box or notifying static was pressed
    ListSelection,         ///< the user selected an entry of a list box
    TabSelection,          ///< the user turned to another page of a tab
    TreeSelectionChanging, ///< the selection of a tree is about to change, by the user or by code
    TreeSelectionChanged,  ///< it has changed
    ListItemChanged, ///< a row of a report list became selected or lost the selection, by the user or by code
    CellClick,       ///< a cell of a grid was clicked
    CellChoice,      ///< a choice was made in a cell's list
    UserMessage,     ///< a message of the host; the source is its code
};

/// What an event brings along.
struct Notice
{
    int row = -1;    ///< cell events: the cell
    int column = -1; ///< cell events: the cell
    CString text;    ///< `CellChoice`: the chosen text
    /// `UserMessage`: the sender's record, valid until the message is handled.
    const void* record = nullptr;
    int result = 0; ///< `UserMessage`: what the message is to be answered with
};

/// The events that a dialog listens to: event, source id, handler.
class EventTable
{
public:
    using Handler = std::function<void(Notice&)>;

    /// Enters a handler. One for the same event and source that was entered before is replaced, so a derived
    /// dialog takes precedence over the one it derives from.
    void Set(DialogEvent event, int source, Handler handler);

    /// The handler, by value so that it may replace itself while it runs; empty when there is none.
    Handler Find(DialogEvent event, int source) const;

private:
    std::map<std::pair<DialogEvent, int>, Handler> m_handlers;
};

} // namespace dialogs
