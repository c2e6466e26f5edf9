#include "platform/Apart.h"

#include "platform/Files.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 Large = 64 * 1024 * 1024;
constexpr qint64 Small = 1024;

/// Runs pieces at once and counts them.
class CountedPieces
{
public:
    int Count() const { return m_count; }

private:
    int m_count = 0;
    platform::ScopedPieceRunner m_runner{[this](const platform::Piece& piece) {
        ++m_count;
        EXPECT_TRUE(platform::IsInLongWork());
        piece();
    }};
};

} // namespace

TEST(Apart, WithoutARunnerAPieceIsACall)
{
    bool isDone = false;
    platform::RunApart(Large, [&] {
        isDone = true;
        EXPECT_FALSE(platform::IsInLongWork());
    });
    EXPECT_TRUE(isDone);
}

TEST(Apart, LongPiecesGoToTheRunnerAndShortOnesDoNot)
{
    const CountedPieces pieces;
    platform::RunApart(Small, [] {});
    EXPECT_EQ(pieces.Count(), 0);
    platform::RunApart(Large, [] {});
    EXPECT_EQ(pieces.Count(), 1);
    EXPECT_FALSE(platform::IsInLongWork());
}

TEST(Apart, PieceWithinAPieceRunsAtOnce)
{
    const CountedPieces pieces;
    bool isDone = false;
    platform::RunApart(Large, [&] { platform::RunApart(Large, [&] { isDone = true; }); });
    EXPECT_TRUE(isDone);
    EXPECT_EQ(pieces.Count(), 1);
}

TEST(Apart, RaisedErrorsEndThePiece)
{
    const CountedPieces pieces;
    EXPECT_THROW(platform::RunApart(Large, [] { throw std::runtime_error("no disk"); }), std::runtime_error);
    EXPECT_FALSE(platform::IsInLongWork());
}

TEST(Apart, TurnsAreGivenToWhoeverTakesThemAndNotWithinOne)
{
    platform::GiveTurn();
    int turns = 0;
    const platform::ScopedPieceRunner lively([](const platform::Piece& piece) { piece(); },
                                             [&] {
                                                 ++turns;
                                                 EXPECT_TRUE(platform::IsInLongWork());
                                                 platform::GiveTurn();
                                             });
    platform::GiveTurn();
    EXPECT_EQ(turns, 1);
    platform::RunApart(Large, [] { platform::GiveTurn(); });
    EXPECT_EQ(turns, 1);
    const CountedPieces withoutTurns;
    platform::GiveTurn();
    EXPECT_EQ(turns, 1);
}

TEST(Apart, OtherThreadsHaveNoRunner)
{
    const CountedPieces pieces;
    std::thread([] { platform::RunApart(Large, [] { EXPECT_FALSE(platform::IsInLongWork()); }); }).join();
    EXPECT_EQ(pieces.Count(), 0);
}

TEST(Apart, FormerRunnerComesBack)
{
    const CountedPieces outer;
    {
        const CountedPieces inner;
        platform::RunApart(Large, [] {});
        EXPECT_EQ(inner.Count(), 1);
    }
    platform::RunApart(Large, [] {});
    EXPECT_EQ(outer.Count(), 1);
}

TEST(Apart, LargeFilesAreReadAndWrittenInPieces)
{
    const test::TempFolder folder;
    const QByteArray bytes(Large / 8, 'x');
    const CountedPieces pieces;
    platform::Files().WriteInPlace(folder.Path(u"a"_s), bytes);
    const int written = pieces.Count();
    EXPECT_GE(written, 2) << "writing and handing to the disk";
    EXPECT_EQ(platform::Files().Read(folder.Path(u"a"_s)), bytes);
    EXPECT_GT(pieces.Count(), written);
}
