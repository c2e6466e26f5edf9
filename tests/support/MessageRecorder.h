#pragma once

#include "platform/Messages.h"
#include "support/PrintText.h"

#include <ostream>
#include <vector>

namespace platform {

// How GoogleTest shows them in a failure.
void PrintTo(MessageKind kind, std::ostream* out);
void PrintTo(Answer answer, std::ostream* out);

} // namespace platform

namespace test {

/// Takes the place of the user for as long as it lives: remembers every message and answers with what the
/// test has preset. Without a preset answer a question is answered No.
class MessageRecorder
{
public:
    MessageRecorder();

    /// The answers of the next questions, in order. Other messages use none of them.
    void PresetAnswer(platform::Answer answer) { m_answers.push_back(answer); }

    /// Everything shown so far, in order.
    const std::vector<platform::Message>& Messages() const noexcept { return m_messages; }
    /// The texts alone.
    CStringArray Texts() const;
    /// Forgets what was shown, not the preset answers.
    void Clear() { m_messages.clear(); }

private:
    platform::Answer Record(const platform::Message& message);

    std::vector<platform::Message> m_messages;
    std::vector<platform::Answer> m_answers;
    std::size_t m_answered = 0;
    platform::ScopedMessageHandler m_installed;
};

} // namespace test
