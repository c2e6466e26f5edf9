#include "host/UserMessage.h"

namespace host {

UserMessage::UserMessage(int code, const void* record) : QEvent(EventType()), m_code(code), m_record(record)
{
}

UserMessage::~UserMessage() = default;

QEvent::Type UserMessage::EventType()
{
    static const int type = QEvent::registerEventType();
    return static_cast<QEvent::Type>(type);
}

} // namespace host
