#include "rules/check/Cover.h"

#include <gtest/gtest.h>

#include <deque>
#include <optional>
#include <random>
#include <utility>
#include <vector>

using rules::CellSet;
using rules::Cover;

namespace {

constexpr std::size_t Axes = 7;
constexpr std::size_t Cells = 4;
constexpr std::size_t PartCount = 70;
constexpr long long Plenty = 100'000'000;

using Sets = std::vector<CellSet>;

CellSet AllCells()
{
    CellSet cells(Cells);
    for (std::size_t cell = 0; cell < Cells; ++cell)
        cells.Add(cell);
    return cells;
}

/// Halves the part in one attribute; the second half. Nothing happens where it has one cell only.
std::optional<Sets> Halved(Sets& part, std::size_t axis)
{
    CellSet first(Cells);
    CellSet second(Cells);
    std::size_t count = 0;
    part[axis].Each([&](std::size_t cell) { (count++ % 2 == 0 ? first : second).Add(cell); });
    if (count < 2) return std::nullopt;
    Sets other = part;
    part[axis] = first;
    other[axis] = second;
    return other;
}

/// Parts that do not meet and together are all: none can be spared, and to find that out takes long.
std::deque<Sets> Pieces()
{
    std::mt19937 random(1); // the same parts every time
    std::deque<Sets> pieces{Sets(Axes, AllCells())};
    while (pieces.size() < PartCount) {
        Sets& piece = pieces[random() % pieces.size()];
        if (std::optional<Sets> other = Halved(piece, random() % Axes)) pieces.push_back(std::move(*other));
    }
    for (std::size_t i = pieces.size(); i-- > 1;)
        std::swap(pieces[i], pieces[random() % (i + 1)]);
    return pieces;
}

Cover::Part PartOf(const Sets& sets)
{
    Cover::Part part;
    for (const CellSet& cells : sets)
        part.push_back(&cells);
    return part;
}

} // namespace

TEST(Cover, SearchForTheSmallestSetEndsWithItsEffort)
{
    const Sets all(Axes, AllCells());
    const std::deque<Sets> pieces = Pieces();
    std::vector<Cover::Part> parts;
    for (const Sets& piece : pieces)
        parts.push_back(PartOf(piece));
    const auto leftOf = [&](long long given, bool& isSmallest) {
        rules::Effort effort{given};
        Cover cover(PartOf(all), parts, Cover::Purpose::Answer, effort);
        EXPECT_EQ(cover.SmallestCover(isSmallest).size(), PartCount);
        return effort.left;
    };
    bool isSmallest = false;
    const long long used = Plenty - leftOf(Plenty, isSmallest);
    EXPECT_TRUE(isSmallest);
    constexpr long long Steps = 12;
    for (long long step = 1; step < Steps; ++step) {
        // What is begun may end: a step costs no more than comparing all parts.
        EXPECT_GE(leftOf(used * step / Steps, isSmallest), -2 * static_cast<long long>(PartCount)) << step;
        EXPECT_FALSE(isSmallest) << "it might be smaller";
    }
}
