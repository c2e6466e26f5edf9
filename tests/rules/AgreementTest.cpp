// The matcher against the plain one of docs/matching.md, on random rules and components of every form, odd
// ones included. KTQDDE_MATCH_COMPONENTS asks for more components, KTQDDE_MATCH_SEED repeats a run.
#include "rules/match/Matching.h"
#include "rules/match/Trace.h"

#include "rules/RandomRules.h"
#include "tests/rules/reference/ReferenceMatcher.h"

#include <gtest/gtest.h>

using test::Dice;

namespace {

/// Matches random components of one random category in every way there is; how many components there were.
std::size_t TryOneCategory(Dice& dice)
{
    const rules::SmallCategoryPtr category = test::RandomCategory(dice);
    const rules::CategoryFacts facts = test::RandomFacts(dice);
    const CStringArray headers = test::RandomHeaders(dice, facts);
    const auto matcher = std::make_shared<const rules::CategoryMatcher>(category, facts);
    const auto columns = matcher->ColumnsFor(headers);
    // A small memory forgets all the time, none at all at every step.
    rules::Matching matching(matcher, dice.Of<std::size_t>({rules::Matching::UsualMemory, 4096, 0}));
    constexpr std::size_t Count = 250;
    for (std::size_t i = 0; i < Count; ++i) {
        test::Component component;
        component.name = test::RandomText(dice);
        for (const CString& header : headers)
            component.cells[header] = test::RandomText(dice);
        std::vector<rules::Cell> cells;
        std::vector<rules::Matching::Value> values;
        for (std::size_t attribute = 0; attribute < columns.size(); ++attribute) {
            rules::Cell cell;
            if (matcher->Attributes()[attribute].isOwnName)
                cell = component.name;
            else if (columns[attribute])
                cell = component.cells[headers[static_cast<qsizetype>(*columns[attribute])]];
            values.push_back(cell ? matching.Resolve(attribute, *cell) : rules::Matching::Missing);
            cells.push_back(std::move(cell));
        }
        const int expected = test::ReferenceMatch(category->rules, facts, component);
        EXPECT_EQ(matching.Match(values), expected);
        EXPECT_EQ(matcher->Match(cells), expected);
        if (i % 10 == 0) {
            EXPECT_EQ(rules::Explain(*matcher, cells).applies, expected);
        }
        if (testing::Test::HasFailure()) break;
    }
    return Count;
}

} // namespace

TEST(Agreement, MatcherAndReferenceGiveEveryRandomComponentTheSameRule)
{
    const std::size_t wanted = test::ComponentsOfRun(100'000);
    const unsigned seed = test::SeedOfRun();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    std::size_t done = 0;
    while (done < wanted && !HasFailure())
        done += TryOneCategory(dice);
}
