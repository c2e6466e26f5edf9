#include "widgets/Guard.h"

#include "support/MessageRecorder.h"
#include "support/PrintText.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Qt::StringLiterals;

TEST(RunGuarded, IsTrueAndSilentWhenNothingIsRaised)
{
    const test::MessageRecorder recorder;
    bool ran = false;
    EXPECT_TRUE(widgets::RunGuarded([&ran] { ran = true; }, u"标题"_s));
    EXPECT_TRUE(ran);
    EXPECT_TRUE(recorder.Messages().empty());
}

TEST(RunGuarded, ShowsTheWordsOfAnErrorUnderTheCaption)
{
    const test::MessageRecorder recorder;
    const std::string words = u"磁盘已满"_s.toStdString();
    EXPECT_FALSE(widgets::RunGuarded([&words] { throw std::runtime_error(words); }, u"标题"_s));
    ASSERT_EQ(recorder.Messages().size(), 1U);
    EXPECT_EQ(recorder.Messages().front().text, u"磁盘已满"_s);
    EXPECT_EQ(recorder.Messages().front().caption, u"标题"_s);
}

TEST(RunGuarded, StopsWhatIsNoStandardErrorToo)
{
    const test::MessageRecorder recorder;
    EXPECT_FALSE(widgets::RunGuarded([] { throw 7; }, u"标题"_s));
    ASSERT_EQ(recorder.Messages().size(), 1U);
    EXPECT_EQ(recorder.Messages().front().text, u"操作没有完成，原因不明"_s);
}
