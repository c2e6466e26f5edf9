#include "rules/bill/PriceTakeoff.h"

#include "rules/RulesTesting.h"
#include "rules/bill/BillComparison.h"
#include "rules/takeoff/TakeoffAhead.h"
#include "support/TempFolder.h"
#include "tables/TableError.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using rules::PricedRow;
using rules::TakeoffPricing;

namespace {

const CString OnlyCategory = u"甲\\乙\\丙"_s;

/// One category: pipes of steel have a bill item, the default rule none.
rules::ConfigurationPtr Configuration(const CString& material = u"钢管"_s)
{
    auto category = std::make_shared<rules::SmallCategory>();
    category->text = OnlyCategory;
    rules::Rule rule = test::RuleOf({test::Value(u"材质"_s, u"＝"_s, material)});
    rules::BillItem item;
    item.record.strQdId = u"1"_s;
    item.record.strUnit = u"m"_s;
    item.record.strFormula = u"长度"_s;
    item.record.strQdCode = u"L"_s;
    rule.bills.push_back(item);
    category->rules = {rule, test::RuleOf({}, true)};
    rules::Specialty specialty;
    specialty.bigCategories.push_back({1, u"乙"_s, {category}});
    return std::make_shared<const rules::Configuration>(std::vector{specialty});
}

/// A table in a folder of its own, and how it is priced.
class PriceTakeoff : public testing::Test
{
protected:
    void Write(const QString& rows) const
    {
        m_folder.WriteFile(u"t.csv"_s, (u"构件编号,类别,材质,长度,楼层\n"_s + rows).toUtf8());
    }
    rules::TakeoffJob Job() const
    {
        rules::TakeoffJob job;
        job.table = m_folder.Path(u"t.csv"_s);
        job.configuration = Configuration();
        job.facts.billLibrary = u"L"_s;
        return job;
    }

    test::TempFolder m_folder;
};

QString Row(const QString& id, const QString& material, const QString& length)
{
    return id + u',' + OnlyCategory + u',' + material + u',' + length + u",1\n"_s;
}

} // namespace

TEST_F(PriceTakeoff, TableWithoutIdsThatComeTwiceIsReadOnce)
{
    Write(Row(u"a"_s, u"钢管"_s, u"1.5"_s) + Row({}, u"钢管"_s, u"2"_s) + Row({}, u"铜管"_s, u"4"_s));
    int begun = 0;
    int taken = 0;
    TakeoffPricing pricing(Job());
    const rules::Bill& bill =
        pricing.Price({.begin = [&] { ++begun; }, .take = [&](const PricedRow&) { ++taken; }});
    EXPECT_EQ(begun, 1);
    EXPECT_EQ(taken, 3) << "an empty id is nobody's";
    EXPECT_EQ(bill.totals, (rules::Totals{3, 2, 1, 0}));
    EXPECT_EQ(bill.rows.at(0).quantity, u"3.50"_s);
}

TEST_F(PriceTakeoff, OfTwoComponentsWithOneIdTheFirstCountsAndAllAreToldAnew)
{
    Write(Row(u"a"_s, u"钢管"_s, u"1.5"_s) + Row(u"b"_s, u"钢管"_s, u"2"_s) +
          Row(u"a"_s, u"钢管"_s, u"70"_s));
    int begun = 0;
    CStringArray refused;
    TakeoffPricing pricing(Job());
    const rules::TakeoffWatch watch{.begin =
                                        [&] {
                                            ++begun;
                                            refused.clear();
                                        },
                                    .take =
                                        [&](const PricedRow& priced) {
                                            if (priced.result.refusal == rules::Refusal::IdTwice)
                                                refused.append(CString::number(priced.row.line));
                                        }};
    EXPECT_EQ(pricing.Price(watch).rows.at(0).quantity, u"3.50"_s);
    EXPECT_EQ(begun, 2);
    EXPECT_EQ(refused, CStringArray{u"4"_s});
    pricing.PriceAgain(watch);
    EXPECT_EQ(begun, 3) << "what is written of components is told once";
    EXPECT_EQ(refused, CStringArray{u"4"_s});
}

TEST_F(PriceTakeoff, TableThatHasChangedMeanwhileIsRefused)
{
    Write(Row(u"a"_s, u"钢管"_s, u"1.5"_s));
    TakeoffPricing pricing(Job());
    pricing.Price();
    Write(Row(u"a"_s, u"钢管"_s, u"1.6"_s));
    EXPECT_THROW(pricing.PriceAgain({}), rules::TakeoffChanged);
}

TEST_F(PriceTakeoff, FaultInTheTableIsRaisedBehindTheComponentsBeforeIt)
{
    QString rows;
    for (int i = 0; i < 1'000; ++i)
        rows += Row(QString::number(i), u"钢管"_s, u"1"_s);
    Write(rows + u"x,y,z,1,2,3\n"_s);
    int taken = 0;
    TakeoffPricing pricing(Job());
    try {
        pricing.Price({.take = [&](const PricedRow&) { ++taken; }});
        FAIL() << "the row has a cell too many";
    } catch (const tables::TableError& error) {
        EXPECT_EQ(error.Where().line, 1'002);
    }
    EXPECT_EQ(taken, 1'000);
}

TEST_F(PriceTakeoff, WorkEndsWhereverTheProgressAsksForIt)
{
    QString rows;
    for (int i = 0; i < 5'000; ++i)
        rows += Row(QString::number(i), u"钢管"_s, u"1"_s);
    Write(rows);
    for (int call = 0; call < 10; ++call) {
        int left = call;
        TakeoffPricing pricing(Job());
        EXPECT_THROW(pricing.Price({.progress =
                                        [&](double) {
                                            if (left-- == 0) throw std::runtime_error("enough");
                                        }}),
                     std::runtime_error);
    }
}

TEST_F(PriceTakeoff, RowsReadAheadAreThoseOfTheTableInTheirOrder)
{
    QString rows;
    for (int i = 0; i < 3'000; ++i)
        rows += Row(QString::number(i), u"钢管"_s, QString::number(i % 7));
    Write(rows);
    rules::TakeoffReader reader(Job().table);
    rules::TakeoffAhead ahead(reader);
    for (int i = 0; i < 3'000; ++i) {
        const rules::TakeoffRow* const row = ahead.Next();
        ASSERT_NE(row, nullptr);
        ASSERT_EQ(row->id.toString(), QString::number(i));
        ASSERT_EQ(row->cells[3].toString(), QString::number(i % 7));
        ASSERT_EQ(row->line, i + 2);
    }
    EXPECT_EQ(ahead.Next(), nullptr);
    EXPECT_EQ(ahead.Next(), nullptr);
}

TEST_F(PriceTakeoff, ColumnToDivideByThatIsMissingIsNamed)
{
    Write({});
    rules::TakeoffJob job = Job();
    job.groupBy = {u"系统"_s};
    try {
        TakeoffPricing(job).Price();
        FAIL() << "there is no such column";
    } catch (const rules::NoSuchColumn& error) {
        EXPECT_TRUE(QString::fromUtf8(error.what()).contains(u"“系统”"_s));
    }
}

TEST_F(PriceTakeoff, ComparisonAccountsForEverySumThatChanges)
{
    Write(Row(u"a"_s, u"钢管"_s, u"1.5"_s) + Row(u"b"_s, u"铜管"_s, u"2"_s) + Row(u"c"_s, u"铜管"_s, u"?"_s) +
          Row(u"a"_s, u"铜管"_s, u"9"_s));
    TakeoffPricing pricing(Job());
    rules::BillComparison comparison(Configuration(u"铜管"_s), Job().facts);
    CStringArray changed;
    pricing.Price({.begin =
                       [&] {
                           comparison.Begin();
                           changed.clear();
                       },
                   .take =
                       [&](const PricedRow& priced) {
                           if (comparison.Take(priced)) changed.append(priced.row.id.toString());
                       }});
    EXPECT_EQ(changed, (CStringArray{u"a"_s, u"b"_s, u"c"_s}));
    const rules::Bill after = comparison.After();
    EXPECT_EQ(after.totals, (rules::Totals{4, 2, 1, 1}));
    const std::vector<rules::RowChange> rows = comparison.Rows(pricing.Result(), after);
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0].before->quantity, u"1.50"_s);
    EXPECT_EQ(rows[0].after->quantity, u"2.00"_s);
    EXPECT_EQ(rows[0].after->missing, 1U);
    EXPECT_THROW(comparison.Rows(rules::Bill(), after), std::logic_error)
        << "a sum that nothing accounts for";
}
