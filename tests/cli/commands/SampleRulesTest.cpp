#include "cli/CliTesting.h"
#include "embedded/ShippedTable.h"
#include "support/SourceTree.h"
#include "support/StrictXml.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

#include <ostream>
#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;
using test::Cli;
using test::ShippedTable;
using test::TableRow;

namespace {

/// One specialty of a rule file of samples/.
struct Sample
{
    const char* file;
    const char* specialty;

    friend void PrintTo(const Sample& sample, std::ostream* stream)
    {
        *stream << sample.file << ' ' << sample.specialty;
    }
};

QByteArray SampleFile(const QString& name)
{
    QFile file(test::InSourceTree(u"samples/"_s + name));
    if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("no " + name.toStdString());
    return file.readAll();
}

/// The text without the root's "Version", which is that of the program that wrote it.
QByteArray WithoutVersion(const QByteArray& content)
{
    static const QRegularExpression version(u" Version=\"[^\"]*\""_s);
    return QString::fromUtf8(content).remove(version).toUtf8();
}

/// The first row for every value of a column: the first libraries and what they hold stand first.
QHash<QString, TableRow> RowsBy(const QString& table, const QString& column)
{
    QHash<QString, TableRow> rows;
    for (const TableRow& row : ShippedTable(table)) {
        if (!rows.contains(row[column])) rows.insert(row[column], row);
    }
    return rows;
}

/// The rule of the calculation item that measures each category.
QHash<QString, QString> MeasuringRules()
{
    const QHash<QString, TableRow> rules = RowsBy(u"calculation_rules"_s, u"item"_s);
    QHash<QString, QString> measures;
    for (const TableRow& row : ShippedTable(u"calculation_items"_s)) {
        const bool first = row[u"list_name"_s] == u"main" && !measures.contains(row[u"category"_s]);
        if (first) measures.insert(row[u"category"_s], rules[row[u"item"_s]][u"rule"_s]);
    }
    return measures;
}

/// The values that an attribute row offers; none when anything may be entered.
QStringList Offered(const TableRow& attribute)
{
    static const QHash<QString, TableRow> cells = RowsBy(u"cell_data"_s, u"code"_s);
    const QString code = attribute[u"code"_s];
    if (cells[code][u"kind"_s] != u"9") return cells[code][u"value_list"_s].split(u'|', Qt::SkipEmptyParts);
    for (const TableRow& list : ShippedTable(u"drop_lists"_s)) {
        if (list[u"code"_s] == code && list[u"name"_s] == attribute[u"extra"_s])
            return list[u"value_list"_s].split(u'|');
    }
    return {};
}

/// The attributes of all categories with the values offered for them, by category and display name.
QHash<QString, QStringList> AttributeValues()
{
    QHash<QString, QStringList> values;
    for (const TableRow& row : ShippedTable(u"attributes"_s))
        values.insert(row[u"category"_s] + u'\\' + row[u"display_name"_s], Offered(row));
    return values;
}

/// Whether the editor adds this attribute to categories by itself.
bool IsDerived(const QString& attribute)
{
    return attribute.endsWith(u"(mm)");
}

QString Text(const QJsonObject& object, const char* key)
{
    return object.value(QLatin1StringView(key)).toString();
}

/// A sample in a project of its own, read by the program.
class SampleRules : public testing::TestWithParam<Sample>
{
protected:
    SampleRules() : m_cli(u"bill"_s), m_content(SampleFile(QString::fromUtf8(GetParam().file)))
    {
        m_cli.Folder().WriteFile(u"rules.xml"_s, m_content);
    }

    QString Specialty() const { return QString::fromUtf8(GetParam().specialty); }

    QJsonArray Categories() const
    {
        return m_cli
            .RunInProject({u"show"_s, u"--json"_s, u"--config"_s, u"rules.xml"_s, u"--spec"_s, Specialty()})
            .Json()
            .value(u"categories"_s)
            .toArray();
    }

    /// Calls `use` with each rule and the full name of its category.
    template <typename Use>
    void EachRule(const Use& use) const
    {
        int rules = 0;
        for (const auto& category : Categories()) {
            for (const auto& rule : category.toObject().value(u"rules"_s).toArray()) {
                use(rule.toObject(), Text(category.toObject(), "category"));
                ++rules;
            }
        }
        EXPECT_GT(rules, 0);
    }

    /// Calls `use` with each bill item and the full name of its category.
    template <typename Use>
    void EachBill(const Use& use) const
    {
        EachRule([&](const QJsonObject& rule, const QString& category) {
            for (const auto& bill : rule.value(u"qd"_s).toArray())
                use(bill.toObject(), category);
        });
    }

    Cli m_cli;
    QByteArray m_content;
};

/// The sample files that a script of samples/ makes.
class ScriptedSample : public testing::TestWithParam<Sample>
{
};

std::string NameOf(const testing::TestParamInfo<Sample>& info)
{
    const QHash<QString, std::string> names{
        {u"给排水"_s, "Plumbing"}, {u"电气"_s, "Electrical"}, {u"暖通"_s, "Hvac"}};
    const bool mixed = std::string(info.param.file) == "SampleRules.xml";
    return (mixed ? "Mixed" : "Own") + names[QString::fromUtf8(info.param.specialty)];
}

constexpr Sample Scripted[] = {
    {"PlumbingRules.xml", "给排水"}, {"ElectricalRules.xml", "电气"}, {"HvacRules.xml", "暖通"}};
constexpr Sample Mixed[] = {
    {"SampleRules.xml", "给排水"}, {"SampleRules.xml", "电气"}, {"SampleRules.xml", "暖通"}};

/// The range condition of a rule, if it has exactly one.
QJsonObject RangeOf(const QJsonObject& rule)
{
    QJsonObject range;
    int count = 0;
    for (const auto& condition : rule.value(u"conditions"_s).toArray()) {
        if (condition.toObject().value(u"bEqual"_s).toBool()) continue;
        range = condition.toObject();
        ++count;
    }
    return count == 1 ? range : QJsonObject();
}

/// What a rule demands besides its one range, and the attribute of that range: equal texts make a series.
QString SeriesOf(const QJsonObject& rule, const QString& category)
{
    QString series = category + u'|' + Text(RangeOf(rule), "strCFType");
    for (const auto& condition : rule.value(u"conditions"_s).toArray()) {
        const QJsonObject object = condition.toObject();
        if (object.value(u"bEqual"_s).toBool())
            series += u'|' + Text(object, "strCFType") + Text(object, "strEqualoperator") +
                      Text(object, "strValue");
    }
    return series;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Own, SampleRules, testing::ValuesIn(Scripted), NameOf);
INSTANTIATE_TEST_SUITE_P(Mixed, SampleRules, testing::ValuesIn(Mixed), NameOf);
INSTANTIATE_TEST_SUITE_P(Own, ScriptedSample, testing::ValuesIn(Scripted), NameOf);

TEST_P(ScriptedSample, ScriptGivesTheFile)
{
    const Cli cli(u"bill"_s);
    const QString file = QString::fromUtf8(GetParam().file);
    cli.Folder().WriteFile(u"script.jsonl"_s, SampleFile(QString(file).replace(u".xml"_s, u".jsonl"_s)));
    const test::Outcome outcome =
        cli.RunInProject({u"batch"_s, u"script.jsonl"_s, u"--config"_s, u"rules.xml"_s, u"--spec"_s,
                          QString::fromUtf8(GetParam().specialty)});
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(WithoutVersion(cli.Folder().ReadFile(u"rules.xml"_s)) == WithoutVersion(SampleFile(file)))
        << "run the script again, as samples/README.md tells";
}

TEST_P(ScriptedSample, IsAStrictXmlFile)
{
    EXPECT_TRUE(test::IsStrictXml(SampleFile(QString::fromUtf8(GetParam().file))));
}

TEST_P(SampleRules, ConditionsNameAttributesOfTheirCategoryAndValuesOfItsLists)
{
    const QHash<QString, QStringList> known = AttributeValues();
    EachRule([&](const QJsonObject& rule, const QString& category) {
        for (const auto& entry : rule.value(u"conditions"_s).toArray()) {
            const QString attribute = Text(entry.toObject(), "strCFType");
            const QString key = category + u'\\' + attribute;
            EXPECT_TRUE(known.contains(key) || IsDerived(attribute)) << key.toStdString();
            const QString value = Text(entry.toObject(), "strValue");
            const bool listed = known[key].isEmpty() || value.isEmpty() || known[key].contains(value);
            EXPECT_TRUE(listed) << key.toStdString() << ' ' << value.toStdString();
        }
    });
}

TEST_P(SampleRules, RangesOfASeriesMeetWithoutGapOrOverlap)
{
    QString series;
    QString reached;
    int joints = 0;
    EachRule([&](const QJsonObject& rule, const QString& category) {
        const QJsonObject range = RangeOf(rule);
        const QString mine = range.isEmpty() ? QString() : SeriesOf(rule, category);
        if (!mine.isEmpty() && mine == series) {
            EXPECT_EQ(Text(range, "strRange1"), reached) << mine.toStdString();
            ++joints;
        }
        series = mine;
        reached = Text(range, "strRange2");
    });
    EXPECT_GT(joints, 0);
}

TEST_P(SampleRules, DiameterInTheNameOfABillItemIsTheLargestThatItsRuleTakes)
{
    static const QRegularExpression named(u"DN(\\d+)"_s);
    EachRule([&](const QJsonObject& rule, const QString& category) {
        const QString conditions = Text(rule, "text");
        // An automatic air vent is made in one size.
        if (rule.value(u"bDefault"_s).toBool() || conditions.contains(u"自动排气阀"_s)) return;
        for (const auto& bill : rule.value(u"qd"_s).toArray()) {
            const auto size = named.match(Text(bill.toObject(), "strName"));
            if (!size.hasMatch()) continue;
            const bool limited = conditions.contains(u"公称直径≤%1;"_s.arg(size.captured(1))) ||
                                 conditions.contains(u"公称直径＝%1;"_s.arg(size.captured(1)));
            EXPECT_TRUE(limited) << category.toStdString() << ' ' << conditions.toStdString();
        }
    });
}

TEST_P(SampleRules, DefaultRuleCatchesTheRestWhereverThereAreRules)
{
    int caught = 0;
    for (const auto& entry : Categories()) {
        const QJsonArray rules = entry.toObject().value(u"rules"_s).toArray();
        if (rules.size() == 1) continue;
        const QJsonObject last = rules.last().toObject();
        EXPECT_TRUE(last.value(u"bDefault"_s).toBool());
        EXPECT_FALSE(last.value(u"qd"_s).toArray().isEmpty())
            << Text(entry.toObject(), "category").toStdString();
        ++caught;
    }
    EXPECT_GT(caught, 0);
}

TEST_P(SampleRules, BillItemsAreThoseOfTheLibraryWithTheFormulaThatPickingGives)
{
    const QHash<QString, TableRow> bills = RowsBy(u"bill_items"_s, u"number"_s);
    const QHash<QString, QString> measures = MeasuringRules();
    EachBill([&](const QJsonObject& bill, const QString& category) {
        const QString number = Text(bill, "strQdId");
        const TableRow item = bills[number.left(9)];
        EXPECT_EQ(number.size(), 12) << number.toStdString();
        EXPECT_TRUE(Text(bill, "strName").startsWith(item[u"name"_s] + u' ')) << number.toStdString();
        EXPECT_EQ(Text(bill, "strUnit"), item[u"unit"_s]) << number.toStdString();
        EXPECT_EQ(Text(bill, "strUnitCode"), item[u"unit_code"_s]);
        const QString rule = item[u"cal_rule"_s];
        EXPECT_EQ(Text(bill, "strFormula"), rule.isEmpty() ? measures[category] : rule)
            << number.toStdString();
    });
}

TEST_P(SampleRules, BillNumberStandsForOneNameAndNameForOneNumber)
{
    QHash<QString, QString> names;
    QHash<QString, QString> numbers;
    EachBill([&](const QJsonObject& bill, const QString&) {
        const QString number = Text(bill, "strQdId");
        const QString name = Text(bill, "strName");
        EXPECT_EQ(names.value(number, name), name) << number.toStdString();
        EXPECT_EQ(numbers.value(name, number), number) << name.toStdString();
        names.insert(number, name);
        numbers.insert(name, number);
    });
}

TEST_P(SampleRules, QuotaItemsAreThoseOfTheLibraryThatGoWithTheBillItem)
{
    const QHash<QString, TableRow> quotas = RowsBy(u"quota_items"_s, u"number"_s);
    EachBill([&](const QJsonObject& bill, const QString&) {
        const QString number = Text(bill, "strQdId").left(9);
        const bool leftToThePerson = Text(bill, "strName").contains(u"另行核对");
        EXPECT_TRUE(leftToThePerson || !bill.value(u"de"_s).toArray().isEmpty()) << number.toStdString();
        for (const auto& entry : bill.value(u"de"_s).toArray()) {
            const QJsonObject quota = entry.toObject();
            const TableRow item = quotas[Text(quota, "strDeId")];
            EXPECT_EQ(Text(quota, "strName"), item[u"name"_s]);
            EXPECT_EQ(Text(quota, "strUnit"), item[u"unit"_s]);
            EXPECT_TRUE(item[u"bills"_s].split(u',').contains(number))
                << number.toStdString() << ' ' << Text(quota, "strDeId").toStdString();
        }
    });
}
