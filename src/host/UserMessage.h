#pragma once

#include "platform/Export.h"

#include <QtCore/QEvent>

namespace host {

/// A picked bill item; the record is an `SPickedQd`.
inline constexpr int QdPickedMessage = 0x450;
/// A picked quota item; the record is an `SPickedDe`.
inline constexpr int DePickedMessage = 0x446;
/// A question of the host that is answered with 1.
inline constexpr int PresenceMessage = 0x7101;

/// A message from a host's window to a dialog of the module. Sent with `QCoreApplication::sendEvent`, so that
/// it has been handled, and `Result()` is set, when the call returns.
class KTQDDE_EXPORT UserMessage : public QEvent
{
public:
    /// `record` stays the sender's and must live until the message has been handled; may be null.
    UserMessage(int code, const void* record);
    ~UserMessage() override;

    static QEvent::Type EventType();

    int Code() const noexcept { return m_code; }
    const void* Record() const noexcept { return m_record; }
    int Result() const noexcept { return m_result; }
    void SetResult(int result) noexcept { m_result = result; }

private:
    int m_code;
    const void* m_record;
    int m_result = 0;
};

} // namespace host
