#include "platform/Messages.h"

#include "platform/Console.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// The handler in force; empty means standard error.
MessageHandler& Handler()
{
    static MessageHandler handler;
    return handler;
}

Answer ShowOnStandardError(const Message& message)
{
    WriteErr(message.text + u'\n');
    return Answer::No;
}

Message Compose(MessageKind kind, const CString& text, const char16_t* mark)
{
    return {kind, text + CString::fromUtf16(mark), MessageCaption(), true};
}

} // namespace

CString MessageCaption()
{
    return u"Norvasoft"_s;
}

Answer Show(const Message& message)
{
    // A copy: the handler may install another one while it runs.
    const MessageHandler handler = Handler();
    const Answer answer = handler ? handler(message) : ShowOnStandardError(message);
    if (message.kind != MessageKind::Question) return Answer::Ok;
    return answer == Answer::Yes ? Answer::Yes : Answer::No;
}

void ShowWarning(const CString& text)
{
    Show(Compose(MessageKind::Warning, text, WarningMark));
}

bool AskYesNo(const CString& text)
{
    return Show(Compose(MessageKind::Question, text, QuestionMark)) == Answer::Yes;
}

void ShowReport(const CString& text)
{
    Show(Compose(MessageKind::Information, text, ReportMark));
}

MessageHandler InstallMessageHandler(MessageHandler handler)
{
    return std::exchange(Handler(), std::move(handler));
}

ScopedMessageHandler::ScopedMessageHandler(MessageHandler handler)
    : m_previous(InstallMessageHandler(std::move(handler)))
{
}

ScopedMessageHandler::~ScopedMessageHandler()
{
    InstallMessageHandler(std::move(m_previous));
}

} // namespace platform
