#include "platform/Messages.h"

#include "support/MessageRecorder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace platform;

namespace {

/// What `action` writes to standard error.
template <typename Action>
QString ErrorOutputOf(const Action& action)
{
    ::testing::internal::CaptureStderr();
    action();
    return QString::fromStdString(::testing::internal::GetCapturedStderr());
}

TEST(Messages, WithoutHandlerTheTextGoesToStandardError)
{
    EXPECT_EQ(ErrorOutputOf([] { ShowWarning(u"文件不存在"_s); }), u"文件不存在!\n"_s);
    EXPECT_EQ(ErrorOutputOf([] { ShowReport(u"done"_s); }), u"done.\n"_s);
}

TEST(Messages, WithoutHandlerAQuestionIsAnsweredNo)
{
    bool answer = true;
    EXPECT_EQ(ErrorOutputOf([&] { answer = AskYesNo(u"删除"_s); }), u"删除?\n"_s);
    EXPECT_FALSE(answer);
}

TEST(Messages, WithoutHandlerAnyOtherMessageIsAnsweredOk)
{
    Answer answer = Answer::No;
    ErrorOutputOf([&] { answer = Show({MessageKind::Plain, u"x"_s, u"c"_s, false}); });
    EXPECT_EQ(answer, Answer::Ok);
}

TEST(Messages, WarningHasItsMarkKindAndCaption)
{
    const test::MessageRecorder recorder;
    ShowWarning(u"文件不存在"_s);
    ASSERT_EQ(recorder.Messages().size(), 1u);
    const Message& message = recorder.Messages().front();
    EXPECT_EQ(message.kind, MessageKind::Warning);
    EXPECT_EQ(message.text, u"文件不存在!"_s);
    EXPECT_EQ(message.caption, u"Norvasoft"_s);
    EXPECT_TRUE(message.owned);
}

TEST(Messages, QuestionHasItsMarkKindAndCaption)
{
    const test::MessageRecorder recorder;
    AskYesNo(u"覆盖"_s);
    ASSERT_EQ(recorder.Messages().size(), 1u);
    EXPECT_EQ(recorder.Messages().front().kind, MessageKind::Question);
    EXPECT_EQ(recorder.Messages().front().text, u"覆盖?"_s);
    EXPECT_EQ(recorder.Messages().front().caption, u"Norvasoft"_s);
}

TEST(Messages, ReportHasItsMarkKindAndCaption)
{
    const test::MessageRecorder recorder;
    ShowReport(u"导入成功"_s);
    ASSERT_EQ(recorder.Messages().size(), 1u);
    EXPECT_EQ(recorder.Messages().front().kind, MessageKind::Information);
    EXPECT_EQ(recorder.Messages().front().text, u"导入成功."_s);
    EXPECT_EQ(recorder.Messages().front().caption, u"Norvasoft"_s);
}

TEST(Messages, ShowPassesTheMessageOnAsItStands)
{
    const test::MessageRecorder recorder;
    Show({MessageKind::Plain, u"text"_s, u"caption"_s, false});
    ASSERT_EQ(recorder.Messages().size(), 1u);
    EXPECT_EQ(recorder.Messages().front().kind, MessageKind::Plain);
    EXPECT_EQ(recorder.Messages().front().text, u"text"_s);
    EXPECT_EQ(recorder.Messages().front().caption, u"caption"_s);
    EXPECT_FALSE(recorder.Messages().front().owned);
}

TEST(Messages, QuestionIsTrueForYesOnly)
{
    test::MessageRecorder recorder;
    recorder.PresetAnswer(Answer::Yes);
    recorder.PresetAnswer(Answer::No);
    EXPECT_TRUE(AskYesNo(u"a"_s));
    EXPECT_FALSE(AskYesNo(u"b"_s));
}

TEST(Messages, QuestionClosedOtherwiseIsNo)
{
    const ScopedMessageHandler handler([](const Message&) { return Answer::Ok; });
    EXPECT_EQ(Show({MessageKind::Question, u"a"_s, u"c"_s, true}), Answer::No);
}

TEST(Messages, OnlyAQuestionIsAnsweredYesOrNo)
{
    const ScopedMessageHandler handler([](const Message&) { return Answer::Yes; });
    EXPECT_EQ(Show({MessageKind::Warning, u"a"_s, u"c"_s, true}), Answer::Ok);
    EXPECT_EQ(Show({MessageKind::Question, u"a"_s, u"c"_s, true}), Answer::Yes);
}

TEST(Messages, InstallingGivesTheFormerHandlerBack)
{
    const MessageHandler original = InstallMessageHandler([](const Message&) { return Answer::Yes; });
    const MessageHandler yes = InstallMessageHandler([](const Message&) { return Answer::No; });
    EXPECT_FALSE(AskYesNo(u"a"_s));
    InstallMessageHandler(yes);
    EXPECT_TRUE(AskYesNo(u"a"_s));
    InstallMessageHandler(original);
}

TEST(Messages, EmptyHandlerRestoresStandardError)
{
    const test::MessageRecorder recorder;
    const MessageHandler recording = InstallMessageHandler({});
    EXPECT_EQ(ErrorOutputOf([] { ShowWarning(u"a"_s); }), u"a!\n"_s);
    EXPECT_TRUE(recorder.Messages().empty());
    InstallMessageHandler(recording);
}

TEST(Messages, ScopedHandlersNest)
{
    const test::MessageRecorder outer;
    {
        const test::MessageRecorder inner;
        ShowWarning(u"in"_s);
        EXPECT_EQ(inner.Texts(), CStringArray{u"in!"_s});
    }
    ShowWarning(u"out"_s);
    EXPECT_EQ(outer.Texts(), CStringArray{u"out!"_s});
}

TEST(Messages, HandlerMayShowAMessageItself)
{
    CStringArray texts;
    const ScopedMessageHandler handler([&](const Message& message) {
        texts.append(message.text);
        if (texts.size() == 1) ShowReport(u"inner"_s);
        return Answer::Ok;
    });
    ShowWarning(u"outer"_s);
    EXPECT_EQ(texts, (CStringArray{u"outer!"_s, u"inner."_s}));
}

TEST(Messages, HandlerMayReplaceItselfWhileItRuns)
{
    const test::MessageRecorder recorder;
    CString seen;
    const CString captured = u"still alive"_s;
    const ScopedMessageHandler handler([&seen, captured](const Message&) {
        InstallMessageHandler({});
        seen = captured;
        return Answer::Ok;
    });
    ShowWarning(u"a"_s);
    EXPECT_EQ(seen, u"still alive"_s);
}

} // namespace
