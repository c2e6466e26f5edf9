// The matcher against the plain one of docs/matching.md, on random rules and components of every form, odd
// ones included. KTQDDE_MATCH_COMPONENTS asks for more components, KTQDDE_MATCH_SEED repeats a run.
#include "rules/match/Matching.h"
#include "rules/match/Trace.h"

#include "rules/RulesTesting.h"
#include "tests/rules/reference/ReferenceMatcher.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <random>

using namespace Qt::StringLiterals;

namespace {

/// Rules and components out of small stocks, so that conditions hold often.
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

const std::vector<CString> AttributeNames{u"材质"_s, u"公称直径"_s, u"周长(mm)"_s, u"壁厚"_s, u"具体构件"_s};

const std::vector<CString> Words{u"镀锌钢管"_s, u" 镀锌钢管"_s, u"PPR管"_s, u"ＰＰＲ管"_s, u"铜管"_s,
                                 u"ppr管"_s,    u"m²"_s,        u"m2"_s,    u"无"_s};

const std::vector<CString> Numbers{u"50"_s,
                                   u"50.0"_s,
                                   u"+50"_s,
                                   u"５０"_s,
                                   u"DN50"_s,
                                   u"De50"_s,
                                   u"50mm"_s,
                                   u"50 mm"_s,
                                   u"65"_s,
                                   u"DN65"_s,
                                   u"ＤＮ６５"_s,
                                   u"-5"_s,
                                   u"0"_s,
                                   u"-0.0"_s,
                                   u".5"_s,
                                   u"5."_s,
                                   u"5²"_s,
                                   u"52"_s,
                                   u"52.0"_s,
                                   u"0.1"_s,
                                   u"0.10000000000000000000001"_s,
                                   u"12345678901234567890"_s,
                                   u"12345678901234567891"_s,
                                   u"1e3"_s,
                                   u"1,000"_s,
                                   u"DN50×40"_s,
                                   u"-5℃"_s,
                                   u"- 5℃"_s,
                                   u"SC-100"_s,
                                   u"- 7"_s};

const std::vector<CString> Blanks{u""_s, u" "_s, u"\u3000"_s};

CString Text(Dice& dice)
{
    if (dice.OneIn(20)) return dice.Of(Blanks);
    return dice.OneIn(3) ? dice.Of(Words) : dice.Of(Numbers);
}

rules::Condition RandomCondition(Dice& dice)
{
    rules::Condition condition;
    condition.attribute = dice.OneIn(40) ? u" "_s : dice.Of(AttributeNames);
    if (dice.OneIn(20)) condition.attribute = u"周长（mm）"_s;
    condition.isValueForm = dice.OneIn(2);
    const auto sign = [&](std::vector<CString> offered) {
        return dice.OneIn(12) ? dice.Of<CString>({u""_s, u"="_s, u"＝"_s, u"＞"_s, u"≤"_s, u">"_s})
                              : dice.Of(offered);
    };
    // Leftovers of the other form stay in a condition.
    if (condition.isValueForm || dice.OneIn(4)) {
        condition.equalOperator = sign({u"＝"_s, u"＝"_s, u"≠"_s});
        condition.value = Text(dice);
    }
    if (!condition.isValueForm || dice.OneIn(4)) {
        condition.lowerOperator = sign({u"＞"_s, u"≥"_s});
        condition.upperOperator = sign({u"＜"_s, u"≤"_s});
        if (!dice.OneIn(4)) condition.lowerBound = dice.OneIn(12) ? Text(dice) : dice.Of(Numbers);
        if (!dice.OneIn(4)) condition.upperBound = dice.OneIn(12) ? Text(dice) : dice.Of(Numbers);
    }
    return condition;
}

rules::SmallCategoryPtr RandomCategory(Dice& dice)
{
    std::vector<rules::Rule> list;
    for (std::size_t count = dice.OneIn(10) ? dice.Below(200) : dice.Below(30); count > 0; --count) {
        rules::Rule rule;
        rule.isDefault = dice.OneIn(12);
        for (std::size_t conditions = dice.OneIn(25) ? 0 : 1 + dice.Below(4); conditions > 0; --conditions)
            rule.conditions.push_back(RandomCondition(dice));
        list.push_back(rule);
    }
    if (!dice.OneIn(3)) list.push_back(test::RuleOf({}, true));
    return test::CategoryOf(std::move(list));
}

rules::CategoryFacts RandomFacts(Dice& dice)
{
    rules::CategoryFacts facts;
    for (const CString& name : AttributeNames) {
        if (dice.OneIn(5)) continue;
        rules::AttributeFacts fact{.name = name};
        if (!dice.OneIn(4)) fact.code = u"AM_"_s + QString::number(facts.size());
        for (std::size_t values = dice.Below(4); values > 0; --values)
            fact.valueList.append(Text(dice));
        facts.push_back(fact);
    }
    return facts;
}

/// The headers of a table: names, codes, both or neither.
CStringArray RandomHeaders(Dice& dice, const rules::CategoryFacts& facts)
{
    CStringArray headers{u"无关"_s};
    for (const CString& name : AttributeNames)
        if (!dice.OneIn(4)) headers.append(dice.OneIn(8) ? u" "_s + name : name);
    for (const rules::AttributeFacts& fact : facts)
        if (!fact.code.isEmpty() && dice.OneIn(2)) headers.append(fact.code);
    return headers;
}

/// Matches random components of one random category in every way there is; how many components there were.
std::size_t TryOneCategory(Dice& dice)
{
    const rules::SmallCategoryPtr category = RandomCategory(dice);
    const rules::CategoryFacts facts = RandomFacts(dice);
    const CStringArray headers = RandomHeaders(dice, facts);
    const auto matcher = std::make_shared<const rules::CategoryMatcher>(category, facts);
    const auto columns = matcher->ColumnsFor(headers);
    // A small memory forgets all the time, none at all at every step.
    rules::Matching matching(matcher, dice.Of<std::size_t>({rules::Matching::UsualMemory, 4096, 0}));
    constexpr std::size_t Count = 250;
    for (std::size_t i = 0; i < Count; ++i) {
        test::Component component;
        component.name = Text(dice);
        for (const CString& header : headers)
            component.cells[header] = Text(dice);
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
    const std::size_t wanted = qEnvironmentVariableIsSet("KTQDDE_MATCH_COMPONENTS")
                                   ? qEnvironmentVariable("KTQDDE_MATCH_COMPONENTS").toULongLong()
                                   : 100'000;
    const unsigned seed = qEnvironmentVariableIsSet("KTQDDE_MATCH_SEED")
                              ? qEnvironmentVariable("KTQDDE_MATCH_SEED").toUInt()
                              : std::random_device{}();
    std::printf("seed %u\n", seed);
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    std::size_t done = 0;
    while (done < wanted && !HasFailure())
        done += TryOneCategory(dice);
}
