#include "support/MessageRecorder.h"

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
