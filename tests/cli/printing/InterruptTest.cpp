#include "cli/printing/Interrupt.h"

#include <gtest/gtest.h>

#include <csignal>

namespace {

int formerCalls = 0;

extern "C" void Former(int /*signal*/)
{
    ++formerCalls;
}

} // namespace

TEST(Interrupt, IsRememberedAndNotLeftToTheFormerHandlerUntilTheEnd)
{
    formerCalls = 0;
    const auto before = std::signal(SIGINT, Former);
    {
        const cli::Interrupt interrupt;
        EXPECT_FALSE(interrupt.HasCome());
        std::raise(SIGINT);
        EXPECT_TRUE(interrupt.HasCome());
    }
    EXPECT_EQ(formerCalls, 0);
    EXPECT_FALSE(cli::Interrupt().HasCome()) << "the former one is forgotten";
    std::raise(SIGINT);
    EXPECT_EQ(formerCalls, 1);
    std::signal(SIGINT, before);
}
