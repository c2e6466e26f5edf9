#include "rules/sql/RulesSql.h"

#include "rules/match/CategoryMatcher.h"

#include "rules/RulesTesting.h"
#include "rules/sql/Databases.h"

#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <stdexcept>

using namespace Qt::StringLiterals;
using test::RuleOf;
using test::Value;

namespace {

const CString Text = u"给排水\\管道\\给水管"_s;
const CString Material = u"材质"_s;

rules::ConfigurationPtr Configured(std::vector<rules::Rule> list)
{
    auto category = std::make_shared<rules::SmallCategory>(*test::CategoryOf(std::move(list)));
    category->name = u"给水管"_s;
    category->text = Text;
    rules::BigCategory big{1, u"管道"_s, {category}};
    rules::Specialty specialty{1, u"给排水"_s, {big}};
    return std::make_shared<const rules::Configuration>(std::vector{specialty});
}

rules::SqlOptions Options(rules::SqlDialect dialect = rules::SqlDialect::Sqlite)
{
    return {.dialect = dialect, .category = {}, .billLibrary = u"GB50500-2013"_s, .quotaLibrary = u"Demo"_s};
}

/// The rules that cells of one column get, by place in the list, 0 for none.
std::vector<int> RulesOf(const std::vector<CString>& cells, const rules::Configuration& configuration,
                         const rules::CatalogueFacts& facts = {}, const CString& column = Material)
{
    test::SqlEngine engine;
    std::vector<test::SqlRow> rows;
    for (const CString& cell : cells)
        rows.push_back({{u"构件编号"_s, CString::number(rows.size())}, {u"类别"_s, Text}, {column, cell}});
    engine.Fill({u"构件编号"_s, u"类别"_s, column}, rows);
    std::vector<int> places(cells.size(), -1);
    for (test::AnswerRow& row : engine.Ask(rules::RulesSql(configuration, facts, Options())))
        places.at(row[u"构件编号"_s].value_or(CString()).toULongLong()) =
            row[u"规则"_s].value_or(u"0"_s).toInt();
    return places;
}

rules::BillItem Bill(const CString& number, const CString& library, std::vector<rules::QuotaItem> quotas)
{
    rules::BillItem item;
    item.record.strQdId = number;
    item.record.strName = u"名'称"_s + number;
    item.record.strUnit = u"m"_s;
    item.record.strQdCode = library;
    item.record.strFormula = u"管道长度"_s;
    item.record.strAnnex = u"是"_s;
    item.quotas = std::move(quotas);
    return item;
}

rules::QuotaItem Quota(const CString& number, const CString& library)
{
    rules::QuotaItem item;
    item.record.strDeId = number;
    item.record.strName = u"定额"_s + number;
    item.record.strUnit = u"10m"_s;
    item.record.strDeCode = library;
    item.record.strFormula = u"管道长度"_s;
    item.record.strAnnex = u"否"_s;
    return item;
}

/// The answer as a set of lines, the columns of interest joined by spaces.
std::multiset<QString> Lines(std::vector<test::AnswerRow> rows, const CStringArray& headings)
{
    std::multiset<QString> lines;
    for (test::AnswerRow& row : rows) {
        QStringList cells;
        for (const CString& heading : headings)
            cells.append(row.at(heading).value_or(u"-"_s));
        lines.insert(cells.join(u' '));
    }
    return lines;
}

} // namespace

TEST(RulesSql, GivesEachComponentARowForEveryItemOfItsRule)
{
    rules::Rule copper = RuleOf({Value(Material, u"＝"_s, u"铜管"_s)});
    copper.bills = {Bill(u"031001001001"_s, u"gb50500-2013"_s,
                         {Quota(u"示10-1"_s, u"Demo"_s), Quota(u"旧1"_s, u"Old"_s)}),
                    Bill(u"旧清单"_s, u"GB50500-2008"_s, {Quota(u"示10-2"_s, u"Demo"_s)})};
    copper.quotas = {Quota(u"示10-3"_s, u"DEMO"_s)};
    const auto configuration = Configured({copper, RuleOf({}, true)});
    test::SqlEngine engine;
    engine.Fill({u"构件编号"_s, u"类别"_s, Material},
                {{{u"构件编号"_s, u"P1"_s}, {u"类别"_s, Text}, {Material, u"铜管"_s}},
                 {{u"构件编号"_s, u"P2"_s}, {u"类别"_s, Text}},
                 {{u"构件编号"_s, u"P3"_s}, {u"类别"_s, u"别的"_s}}});
    const CStringArray headings{u"构件编号"_s, u"规则"_s, u"默认规则"_s, u"项"_s,
                                u"所属清单"_s, u"编码"_s, u"单位"_s,     u"带管道配件"_s};
    EXPECT_EQ(
        Lines(engine.Ask(rules::RulesSql(*configuration, {}, Options())), headings),
        (std::multiset<QString>{u"P1 1 否 1 - 031001001001 m 是"_s, u"P1 1 否 2 031001001001 示10-1 10m 否"_s,
                                u"P2 2 是 - - - - -"_s, u"P3 - - - - - - -"_s}));
    rules::SqlOptions quotaMode = Options();
    quotaMode.isBill = false;
    EXPECT_EQ(Lines(engine.Ask(rules::RulesSql(*configuration, {}, quotaMode)), headings),
              (std::multiset<QString>{u"P1 1 否 1 - 示10-3 10m 否"_s, u"P2 2 是 - - - - -"_s,
                                      u"P3 - - - - - - -"_s}));
}

TEST(RulesSql, OneCategoryAloneAnswersForItsComponentsAlone)
{
    const auto configuration = Configured({RuleOf({}, true)});
    test::SqlEngine engine;
    engine.Fill({u"构件编号"_s, u"类别"_s}, {{{u"构件编号"_s, u"P1"_s}, {u"类别"_s, Text}},
                                             {{u"构件编号"_s, u"P2"_s}, {u"类别"_s, u"别的"_s}}});
    rules::SqlOptions options = Options();
    options.category = Text;
    EXPECT_EQ(Lines(engine.Ask(rules::RulesSql(*configuration, {}, options)), {u"构件编号"_s, u"规则"_s}),
              (std::multiset<QString>{u"P1 1"_s}));
    options.category = u"没有的"_s;
    EXPECT_TRUE(engine.Ask(rules::RulesSql(*configuration, {}, options)).empty());
}

TEST(RulesSql, AConfigurationWithoutCategoriesDecidesNothing)
{
    const rules::Configuration none({});
    test::SqlEngine engine;
    engine.Fill({u"构件编号"_s, u"类别"_s}, {{{u"构件编号"_s, u"P1"_s}, {u"类别"_s, Text}}});
    EXPECT_EQ(Lines(engine.Ask(rules::RulesSql(none, {}, Options())), {u"构件编号"_s, u"规则"_s}),
              (std::multiset<QString>{u"P1 -"_s}));
}

TEST(RulesSql, ATableWithoutAColumnIsAnErrorAndNotATextOfItsName)
{
    const auto configuration = Configured({RuleOf({Value(Material, u"＝"_s, Material)})});
    test::SqlEngine engine;
    engine.Fill({u"构件编号"_s, u"类别"_s}, {{{u"构件编号"_s, u"P1"_s}, {u"类别"_s, Text}}});
    EXPECT_THROW(engine.Ask(rules::RulesSql(*configuration, {}, Options())), std::runtime_error);
}

TEST(RulesSql, TheSameConfigurationAlwaysGivesTheSameText)
{
    const auto configuration =
        Configured({RuleOf({Value(Material, u"＝"_s, u"é 50㎜"_s)}), RuleOf({}, true)});
    for (const auto dialect :
         {rules::SqlDialect::PostgreSql, rules::SqlDialect::Sqlite, rules::SqlDialect::DuckDb})
        EXPECT_EQ(rules::RulesSql(*configuration, {}, Options(dialect)),
                  rules::RulesSql(*configuration, {}, Options(dialect)));
}

/// Every seventh of the characters that decompose stands for all.
TEST(RulesSql, CharactersOfOtherWidthAndFormEqualThePlainOnes)
{
    std::vector<CString> cells;
    std::vector<rules::Rule> list;
    std::set<CString> known;
    int place = 0;
    for (char32_t c = 0x80; c <= 0x10FFFF; ++c) {
        if (QChar::isSurrogate(c) || QChar::decompositionTag(c) == QChar::NoDecomposition) continue;
        if (++place % (c >= 0xAC00 && c <= 0xD7A3 ? 511 : 17) != 0) continue;
        const CString cell = u"甲"_s + CString::fromUcs4(&c, 1) + u"1"_s;
        cells.push_back(cell);
        if (known.insert(rules::Normalised(cell)).second)
            list.push_back(RuleOf({Value(Material, u"＝"_s, rules::Normalised(cell))}));
    }
    ASSERT_GT(list.size(), 200u);
    const auto configuration = Configured(std::move(list));
    const rules::CategoryMatcher matcher(configuration->Find(Text), {});
    const std::vector<int> answered = RulesOf(cells, *configuration);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const int expected = matcher.Match(std::vector<rules::Cell>{cells[i]}) + 1;
        EXPECT_GT(expected, 0);
        EXPECT_EQ(answered[i], expected) << cells[i].toStdString();
    }
}

TEST(RulesSql, NoTextEqualsAValueThatNoDatabaseCanHold)
{
    const CString withNul = u"铜"_s + QChar(u'\0') + u"管"_s;
    const CString withHalf = u"铜"_s + QChar(0xD800);
    const auto configuration =
        Configured({RuleOf({Value(Material, u"＝"_s, withNul)}), RuleOf({Value(Material, u"＝"_s, withHalf)}),
                    RuleOf({Value(withNul, u"≠"_s, u"x"_s)}), RuleOf({Value(Material, u"≠"_s, withNul)})});
    EXPECT_EQ(RulesOf({u"铜"_s, u"铜管"_s, u"铜\uFFFD"_s, u""_s}, *configuration),
              (std::vector<int>{4, 4, 4, 0}));
}

TEST(RulesSql, TextsOfItemsLoseWhatNoDatabaseCanHold)
{
    rules::Rule rule = RuleOf({}, true);
    rule.bills = {Bill(u"0310"_s + QChar(u'\0') + u"01"_s, u"GB50500-2013"_s, {})};
    test::SqlEngine engine;
    engine.Fill({u"构件编号"_s, u"类别"_s}, {{{u"构件编号"_s, u"P1"_s}, {u"类别"_s, Text}}});
    EXPECT_EQ(Lines(engine.Ask(rules::RulesSql(*Configured({rule}), {}, Options())), {u"编码"_s}),
              (std::multiset<QString>{u"031001"_s}));
}

TEST(RulesSql, HeapsOfMarksAreRefusedInWords)
{
    // Marks of seven classes on one letter may be written in 5,040 orders.
    const CString heap = u"q\u0316\u0323\u0327\u0301\u0345\u0360\u035D\u031B\u0591\u05B0\u05B1"_s;
    const auto configuration = Configured({RuleOf({Value(Material, u"＝"_s, heap)})});
    try {
        rules::RulesSql(*configuration, {}, Options());
        FAIL() << "not refused";
    } catch (const std::length_error& error) {
        EXPECT_TRUE(CString::fromUtf8(error.what()).contains(u"附加符号"_s)) << error.what();
    }
}

TEST(RulesSql, RulesOfThousandsOfConditionsAndLongValuesPassTheParser)
{
    std::vector<rules::Condition> conditions;
    for (int i = 0; i < 3'000; ++i)
        conditions.push_back(Value(Material, u"≠"_s, u"铜管%1"_s.arg(i)));
    const CString longValue = CString(1'500, u'a');
    const auto configuration =
        Configured({RuleOf({Value(Material, u"＝"_s, longValue)}), RuleOf(conditions), RuleOf({}, true)});
    EXPECT_EQ(
        RulesOf({longValue, CString(1'500, u'ａ'), CString(1'499, u'ａ'), u"铜管2999"_s}, *configuration),
        (std::vector<int>{1, 1, 2, 3}));
}

TEST(RulesSql, TheFirstOfThousandsOfRulesThatHoldsApplies)
{
    std::vector<rules::Rule> list;
    std::vector<CString> cells;
    std::vector<int> expected;
    for (int i = 0; i < 3'700; ++i) {
        const CString bound = CString::number(i % 1'850);
        list.push_back(RuleOf({test::Range(Material, u"≥"_s, bound, u"≤"_s, bound)}));
        if (i % 100 != 0) continue;
        cells.push_back(CString::number(i) + u".0"_s);
        expected.push_back(i < 1'850 ? i + 1 : 0);
    }
    EXPECT_EQ(RulesOf(cells, *Configured(std::move(list))), expected);
}

/// Whatever the value list makes of a text, the query makes the same of it.
TEST(RulesSql, NumbersAreReadAsTheValueListWritesThem)
{
    const std::vector<CString> cells{
        u"50"_s,      u"DN50"_s,   u"ＤＮ５０"_s, u"DN 50"_s, u"dn50"_s,   u"DN-50"_s,  u"SC-50"_s,
        u"SC--50"_s,  u"50mm"_s,   u"50 mm"_s,    u"-50mm"_s, u"- 50mm"_s, u"+-50mm"_s, u"50.mm"_s,
        u"50 .mm"_s,  u"50..mm"_s, u"5.0.mm"_s,   u"No.5"_s,  u"No. 5"_s,  u"No..5"_s,  u"No. .5"_s,
        u"-50"_s,     u"- 50"_s,   u"-.5"_s,      u"-. 5"_s,  u"50."_s,    u"."_s,      u"DN."_s,
        u"DN50×40"_s, u"DN"_s,     u"5²"_s,       u"DN50mm"_s};
    const std::vector<CStringArray> lists{{},
                                          {u"DN15"_s},
                                          {u"SC-80"_s},
                                          {u"SC80"_s},
                                          {u"15mm"_s},
                                          {u"- 5"_s},
                                          {u"No.5"_s},
                                          {u"No. 5"_s},
                                          {u"5 .mm"_s},
                                          {u"5..mm"_s},
                                          {u"-. 5"_s},
                                          {u"- 5mm"_s},
                                          {u"DN5mm"_s},
                                          {u"DN5"_s, u"5mm"_s},
                                          {u"15"_s, u"No. 5"_s, u"No.5"_s},
                                          {u"5.mm"_s, u"5 .mm"_s}};
    const auto configuration = Configured({RuleOf({Value(Material, u"＝"_s, u"50"_s)}),
                                           RuleOf({test::Range(Material, u"≥"_s, u"50"_s, u"≤"_s, u"50"_s)}),
                                           RuleOf({test::Range(Material, u"≥"_s, u"5"_s, u"＜"_s, u"50"_s)}),
                                           RuleOf({test::Range(Material, u"≥"_s, u"-50"_s, u"＜"_s, u"0"_s)}),
                                           RuleOf({test::Range(Material, u""_s, u""_s, u""_s, u""_s)})});
    std::set<int> met;
    for (const CStringArray& list : lists) {
        rules::CatalogueFacts facts;
        facts[Text] = {{.name = Material, .valueList = list}};
        const rules::CategoryMatcher matcher(configuration->Find(Text), facts[Text]);
        const std::vector<int> answered = RulesOf(cells, *configuration, facts);
        for (std::size_t i = 0; i < cells.size(); ++i) {
            met.insert(answered[i]);
            EXPECT_EQ(answered[i], matcher.Match(std::vector<rules::Cell>{cells[i]}) + 1)
                << cells[i].toStdString() << " where the list has " << list.join(u'|').toStdString();
        }
    }
    EXPECT_EQ(met, (std::set<int>{0, 1, 2, 3, 4, 5}));
}

TEST(RulesSql, PostgresComparesNumbersExactlyWhateverItsOrderOfTexts)
{
    ASSERT_TRUE(test::PostgresServer::IsInstalled()) << "package postgresql-15 has the server";
    const test::PostgresServer server;
    test::SqlEngine engine(server);
    const auto configuration =
        Configured({RuleOf({test::Range(Material, u"＞"_s, u"0.25"_s, u"＜"_s, u"0.35"_s)}),
                    RuleOf({test::Range(Material, u"＞"_s, u"-1.35"_s, u"＜"_s, u"-1.25"_s)})});
    std::vector<test::SqlRow> rows;
    for (const CString& cell :
         {u"0.3"_s, u"0.26"_s, u"0.250000001"_s, u"0.25"_s, u"0.4"_s, u"-1.3"_s, u"-1.4"_s})
        rows.push_back({{u"构件编号"_s, cell}, {u"类别"_s, Text}, {Material, cell}});
    engine.Fill({u"构件编号"_s, u"类别"_s, Material}, rows);
    EXPECT_EQ(Lines(engine.Ask(rules::RulesSql(*configuration, {}, Options(rules::SqlDialect::PostgreSql))),
                    {u"构件编号"_s, u"规则"_s}),
              (std::multiset<QString>{u"0.3 1"_s, u"0.26 1"_s, u"0.250000001 1"_s, u"0.25 -"_s, u"0.4 -"_s,
                                      u"-1.3 2"_s, u"-1.4 -"_s}));
}

/// Reading the rules through for every component would take a hundred times as long.
TEST(RulesSql, SqliteLooksUpTheRuleOfAComponent)
{
    std::vector<rules::Rule> list;
    for (int i = 0; i < 1'000; ++i) {
        list.push_back(RuleOf({Value(Material, u"＝"_s, u"铜管%1"_s.arg(i)),
                               test::Range(u"公称直径"_s, u"≥"_s, u"-1"_s, u"≤"_s, CString::number(i))}));
        list.back().bills = {Bill(CString::number(i), u"GB50500-2013"_s, {})};
    }
    test::SqlEngine engine;
    engine.Fill({u"构件编号"_s, u"类别"_s, Material, u"公称直径"_s}, {});
    const CString sql = rules::RulesSql(*Configured(std::move(list)), {}, Options());
    int lookedUp = 0;
    for (const test::AnswerRow& row : engine.Ask(u"EXPLAIN QUERY PLAN\n"_s + sql)) {
        const CString step = row.at(u"detail"_s).value_or(CString());
        EXPECT_FALSE(step.startsWith(u"SCAN r "_s) || step.startsWith(u"SCAN i "_s)) << step.toStdString();
        if (step.contains(u"(rule_key=?)"_s)) ++lookedUp;
    }
    EXPECT_EQ(lookedUp, 2);
}

/// A function that a database lacks shows only when the query runs there. The names are those that the
/// documentation of DuckDB lists among its text functions and operators.
TEST(RulesSql, DuckDbIsAskedForDocumentedFunctionsOnly)
{
    rules::CatalogueFacts facts;
    facts[Text] = {{.name = u"公称直径"_s, .valueList = {u"No. 15"_s, u"15 .mm"_s, u"- 5"_s}}};
    const auto configuration =
        Configured({RuleOf({Value(Material, u"＝"_s, u"é 50㎜"_s),
                            test::Range(u"公称直径"_s, u"＞"_s, u"-5"_s, u"≤"_s, u"50"_s)}),
                    RuleOf({Value(u"公称直径"_s, u"≠"_s, u"50"_s)}), RuleOf({}, true)});
    CString sql = rules::RulesSql(*configuration, facts, Options(rules::SqlDialect::DuckDb));
    sql.remove(QRegularExpression(u"--[^\n]*|'(?:[^']|'')*'|\"(?:[^\"]|\"\")*\""_s));
    const std::set<CString> documented{u"cast"_s,
                                       u"chr"_s,
                                       u"coalesce"_s,
                                       u"length"_s,
                                       u"ltrim"_s,
                                       u"replace"_s,
                                       u"rtrim"_s,
                                       u"substr"_s,
                                       u"varchar"_s,
                                       u"regexp_matches"_s,
                                       u"regexp_full_match"_s};
    const std::set<CString> words{u"as"_s, u"in"_s,  u"values"_s, u"item_list"_s, u"rule_list"_s,
                                  u"or"_s, u"and"_s, u"when"_s,   u"else"_s,      u"then"_s};
    std::set<CString> called;
    const QRegularExpression call(u"([A-Za-z_0-9]+) *\\("_s);
    for (auto match = call.globalMatch(sql); match.hasNext();)
        called.insert(match.next().captured(1).toLower());
    for (const CString& word : words)
        called.erase(word);
    EXPECT_TRUE(called.contains(u"regexp_full_match"_s));
    EXPECT_TRUE(std::includes(documented.begin(), documented.end(), called.begin(), called.end()))
        << QStringList(called.begin(), called.end()).join(u' ').toStdString();
}
