#pragma once

#include "rules/RulesTesting.h"
#include "rules/model/Facts.h"

#include <random>

/// Random rules of every form, odd ones included, and all that components are drawn from.
namespace test {

/// Draws out of small stocks, so that conditions hold often.
class Dice
{
public:
    explicit Dice(unsigned seed) : m_random(seed) {}

    std::size_t Below(std::size_t limit) { return m_random() % limit; }
    bool OneIn(std::size_t count) { return Below(count) == 0; }
    template <typename T>
    const T& Of(const std::vector<T>& stock)
    {
        return stock[Below(stock.size())];
    }

private:
    std::mt19937 m_random;
};

/// What a run is repeated with: KTQDDE_MATCH_SEED, else a new one. Printed.
unsigned SeedOfRun();
/// How many components a run tries: KTQDDE_MATCH_COMPONENTS, else `usual`.
std::size_t ComponentsOfRun(std::size_t usual);

/// A value or a cell: words, numbers, now and then nothing but blanks.
CString RandomText(Dice& dice);
/// Rules with and without conditions, defaults anywhere or nowhere.
rules::SmallCategoryPtr RandomCategory(Dice& dice);
/// Facts of some of the attributes that the rules name.
rules::CategoryFacts RandomFacts(Dice& dice);
/// The headers of a table: names, codes, both or neither.
CStringArray RandomHeaders(Dice& dice, const rules::CategoryFacts& facts);

} // namespace test
