// The exported query in SQLite and in a PostgreSQL server against the matcher and the plain matcher of
// docs/matching.md, on random rules and components of every form, odd ones included.
// KTQDDE_MATCH_COMPONENTS asks for more components, KTQDDE_MATCH_SEED repeats a run.
#include "rules/match/Matching.h"
#include "rules/sql/RulesSql.h"

#include "rules/RandomRules.h"
#include "rules/sql/Databases.h"
#include "tests/rules/reference/ReferenceMatcher.h"

#include <gtest/gtest.h>

#include <array>

using namespace Qt::StringLiterals;
using test::Dice;

namespace {

constexpr std::size_t CategoriesOfRound = 4;
constexpr std::size_t ComponentsOfCategory = 250;
const CString IdHeading = u"构件编号"_s;
const CString CategoryHeading = u"类别"_s;

/// A component with what every party decides by, and the rule that the reference gives it.
struct Component
{
    CString id;
    CString category; ///< as the table has it
    std::map<CString, rules::Cell> cellByAttribute;
    std::optional<int> expected; ///< the place of the rule in the list, from 1
};

/// A configuration of some random categories, and components of it.
class Round
{
public:
    Round(Dice& dice, std::size_t firstId) : m_dice(dice), m_nextId(firstId)
    {
        rules::BigCategory big{1, u"甲'乙\\\""_s, {}};
        for (std::size_t i = 0; i < CategoriesOfRound; ++i) {
            auto category = std::make_shared<rules::SmallCategory>(*test::RandomCategory(dice));
            category->name = u"类%1"_s.arg(i);
            category->text = u"专业\\甲'乙\\\"\\"_s + category->name;
            big.smallCategories.push_back(category);
        }
        rules::Specialty specialty{1, u"专业"_s, {big}};
        configuration = std::make_shared<const rules::Configuration>(std::vector{std::move(specialty)});
        for (const rules::SmallCategoryPtr& category : big.smallCategories) {
            if (!dice.OneIn(10)) facts[category->text] = test::RandomFacts(dice);
            AddComponents(*category, facts[category->text]);
        }
        AddStrangers();
    }

    rules::ConfigurationPtr configuration;
    rules::CatalogueFacts facts;
    std::vector<Component> components;

private:
    CString NextId() { return QString::number(m_nextId++); }

    void AddComponents(const rules::SmallCategory& category, const rules::CategoryFacts& known)
    {
        CStringArray headers = test::RandomHeaders(m_dice, known);
        headers.removeIf([](const CString& header) { return rules::Normalised(header) == IdHeading; });
        headers.append(IdHeading);
        const auto matcher = std::make_shared<const rules::CategoryMatcher>(
            std::make_shared<const rules::SmallCategory>(category), known);
        rules::Matching matching(matcher);
        const auto columns = matcher->ColumnsFor(headers);
        for (std::size_t i = 0; i < ComponentsOfCategory; ++i) {
            Component made{
                NextId(), m_dice.OneIn(20) ? u" %1\u3000"_s.arg(category.text) : category.text, {}, {}};
            test::Component plain{test::RandomText(m_dice), {}};
            for (const CString& header : headers)
                plain.cells[header] = header == IdHeading ? made.id : test::RandomText(m_dice);
            std::vector<rules::Matching::Value> values;
            for (std::size_t attribute = 0; attribute < columns.size(); ++attribute) {
                rules::Cell cell;
                if (matcher->Attributes()[attribute].isOwnName)
                    cell = plain.name;
                else if (columns[attribute])
                    cell = plain.cells[headers[static_cast<qsizetype>(*columns[attribute])]];
                values.push_back(cell ? matching.Resolve(attribute, *cell) : rules::Matching::Missing);
                made.cellByAttribute[rules::Normalised(matcher->Attributes()[attribute].name)] = cell;
            }
            const int rule = test::ReferenceMatch(category.rules, known, plain);
            EXPECT_EQ(matching.Match(values), rule);
            if (rule != rules::NoRule) made.expected = rule + 1;
            components.push_back(std::move(made));
        }
    }

    /// Components of categories that nobody knows.
    void AddStrangers()
    {
        for (const CString& category : {u"专业\\甲'乙\\\"\\类"_s, u""_s, u"类0"_s})
            components.push_back({NextId(), category, {}, {}});
    }

    Dice& m_dice;
    std::size_t m_nextId;
};

/// Lets an engine decide all components and compares.
void Compare(test::SqlEngine& engine, const Round& round, const CString& onlyCategory, Dice& dice)
{
    rules::SqlOptions options;
    options.dialect = engine.Dialect();
    options.category = onlyCategory;
    const CString sql = rules::RulesSql(*round.configuration, round.facts, options);
    const auto nameByAttribute = rules::SqlColumns(*round.configuration, round.facts, options);
    CStringArray columns{IdHeading, CategoryHeading};
    for (const auto& [attribute, name] : nameByAttribute)
        if (!columns.contains(name)) columns.append(name);
    std::vector<test::SqlRow> rows;
    std::map<CString, std::optional<CString>> expected;
    for (const Component& component : round.components) {
        test::SqlRow& row = rows.emplace_back();
        for (const auto& [attribute, name] : nameByAttribute) {
            const auto cell = component.cellByAttribute.find(attribute);
            // What no rule of the category looks at must make no difference.
            row[name] = cell != component.cellByAttribute.end() ? cell->second : test::RandomText(dice);
        }
        row[IdHeading] = component.id;
        row[CategoryHeading] = component.category;
        if (onlyCategory.isEmpty() || rules::WithoutBlanks(component.category) == onlyCategory)
            expected[component.id] =
                component.expected ? std::optional(CString::number(*component.expected)) : std::nullopt;
    }
    engine.Fill(columns, rows);
    std::map<CString, std::optional<CString>> answered;
    for (test::AnswerRow& row : engine.Ask(sql))
        EXPECT_TRUE(answered.emplace(row[IdHeading].value_or(CString()), row[u"规则"_s]).second);
    for (const auto& [id, rule] : expected) {
        ASSERT_TRUE(answered.contains(id)) << id.toStdString();
        ASSERT_EQ(answered[id].value_or(u"-"_s).toStdString(), rule.value_or(u"-"_s).toStdString())
            << "component " << id.toStdString();
    }
    EXPECT_EQ(answered.size(), expected.size());
}

} // namespace

TEST(SqlAgreement, MatcherReferenceSqliteAndPostgresGiveEveryRandomComponentTheSameRule)
{
    const std::size_t wanted = test::ComponentsOfRun(2'000);
    const unsigned seed = test::SeedOfRun();
    SCOPED_TRACE("seed " + std::to_string(seed));
    ASSERT_TRUE(test::PostgresServer::IsInstalled()) << "package postgresql-15 has the server";
    const test::PostgresServer server;
    test::SqlEngine postgres(server);
    test::SqlEngine sqlite;
    Dice dice(seed);
    std::size_t done = 0;
    while (done < wanted && !HasFailure()) {
        const Round round(dice, done + 1);
        const CString only = dice.OneIn(8) ? u"专业\\甲'乙\\\"\\类1"_s : CString();
        for (test::SqlEngine* const engine : std::array{&sqlite, &postgres})
            Compare(*engine, round, only, dice);
        done += round.components.size();
    }
    std::printf("%zu components\n", done);
}
