#include "support/MessageRecorder.h"

#include <array>

namespace platform {

void PrintTo(MessageKind kind, std::ostream* out)
{
    constexpr std::array names{"Warning", "Question", "Information", "Plain"};
    *out << names.at(static_cast<std::size_t>(kind));
}

void PrintTo(Answer answer, std::ostream* out)
{
    constexpr std::array names{"Ok", "Yes", "No"};
    *out << names.at(static_cast<std::size_t>(answer));
}

} // namespace platform

namespace test {

using platform::Answer;
using platform::Message;
using platform::MessageKind;

MessageRecorder::MessageRecorder() : m_installed([this](const Message& message) { return Record(message); })
{
}

CStringArray MessageRecorder::Texts() const
{
    CStringArray texts;
    for (const Message& message : m_messages)
        texts.append(message.text);
    return texts;
}

Answer MessageRecorder::Record(const Message& message)
{
    m_messages.push_back(message);
    if (message.kind != MessageKind::Question) return Answer::Ok;
    return m_answered < m_answers.size() ? m_answers[m_answered++] : Answer::No;
}

} // namespace test
