#include "dialogs/template/EventTable.h"

namespace dialogs {

void EventTable::Set(DialogEvent event, int source, Handler handler)
{
    m_handlers[{event, source}] = std::move(handler);
}

EventTable::Handler EventTable::Find(DialogEvent event, int source) const
{
    const auto found = m_handlers.find({event, source});
    return found == m_handlers.end() ? Handler() : found->second;
}

} // namespace dialogs
