#include "platform/Console.h"

#include "support/PrintText.h"

#include <gtest/gtest.h>

#if !defined(_WIN32)
#include <langinfo.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#endif

using namespace Qt::StringLiterals;

namespace {

TEST(Console, WritesUtf8AsItStands)
{
    ::testing::internal::CaptureStdout();
    const bool written = platform::WriteOut(u"清单\ta\n定额"_s);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "清单\ta\n定额");
    EXPECT_TRUE(written);
}

TEST(Console, WritesNulCharacters)
{
    ::testing::internal::CaptureStdout();
    platform::WriteOut(u"a\0b"_s);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), std::string("a\0b", 3));
}

TEST(Console, ErrorsGoToStandardError)
{
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    platform::WriteErr(u"错误"_s);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "错误");
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
}

#if !defined(_WIN32)
// Each of these ends the process it runs in, which is a child of the test.

[[noreturn]] void ExitWith(bool success)
{
    std::_Exit(success ? 0 : 1);
}

TEST(ConsoleProcess, UsesUtf8WhateverTheLocale)
{
    EXPECT_EXIT(
        {
            setenv("LC_ALL", "C", 1);
            platform::UseUtf8Console();
            ExitWith(std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0 &&
                     std::strcmp(std::getenv("LC_ALL"), "C.UTF-8") == 0);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST(ConsoleProcess, KeepsALocaleThatIsUtf8)
{
    EXPECT_EXIT(
        {
            setenv("LC_ALL", "C.utf8", 1);
            platform::UseUtf8Console();
            ExitWith(std::strcmp(std::getenv("LC_ALL"), "C.utf8") == 0);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST(ConsoleProcess, ClosedPipeIsReportedAndDoesNotEndTheProgram)
{
    EXPECT_EXIT(
        {
            platform::UseUtf8Console();
            int ends[2];
            if (pipe(ends) != 0) ExitWith(false);
            dup2(ends[1], fileno(stdout));
            close(ends[0]);
            ExitWith(!platform::WriteOut(u"nobody reads this"_s));
        },
        ::testing::ExitedWithCode(0), "");
}
#endif

} // namespace
