#include "host/UserMessage.h"

#include "host/Records.h"
#include "support/PrintText.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QObject>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using host::UserMessage;

namespace {

/// Takes messages as a dialog does.
class Receiver : public QObject
{
public:
    bool event(QEvent* event) override
    {
        if (event->type() != UserMessage::EventType()) return QObject::event(event);
        auto* message = static_cast<UserMessage*>(event);
        code = message->Code();
        if (message->Record() != nullptr)
            number = static_cast<const SPickedDe*>(message->Record())->strNumber;
        message->SetResult(1);
        return true;
    }

    int code = 0;
    QString number;
};

TEST(UserMessage, HasBeenHandledWhenSendingReturns)
{
    Receiver receiver;
    SPickedDe picked;
    picked.strNumber = u"C10-1-1"_s;
    UserMessage message(host::DePickedMessage, &picked);
    EXPECT_TRUE(QCoreApplication::sendEvent(&receiver, &message));
    EXPECT_EQ(receiver.code, 0x446);
    EXPECT_EQ(receiver.number, u"C10-1-1"_s);
    EXPECT_EQ(message.Result(), 1);
}

TEST(UserMessage, RecordMayBeMissing)
{
    Receiver receiver;
    UserMessage message(host::PresenceMessage, nullptr);
    QCoreApplication::sendEvent(&receiver, &message);
    EXPECT_EQ(receiver.code, 0x7101);
    EXPECT_EQ(receiver.number, QString());
}

TEST(UserMessage, ResultIsZeroUntilSomebodySetsIt)
{
    QObject indifferent;
    UserMessage message(host::QdPickedMessage, nullptr);
    QCoreApplication::sendEvent(&indifferent, &message);
    EXPECT_EQ(message.Code(), 0x450);
    EXPECT_EQ(message.Result(), 0);
}

TEST(UserMessage, HasAnEventTypeOfItsOwn)
{
    EXPECT_EQ(UserMessage::EventType(), UserMessage::EventType());
    EXPECT_GE(UserMessage::EventType(), QEvent::User);
    EXPECT_EQ(UserMessage(1, nullptr).type(), UserMessage::EventType());
}

} // namespace
