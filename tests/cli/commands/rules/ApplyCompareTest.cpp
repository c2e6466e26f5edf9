#include "cli/CliTesting.h"
#include "cli/TakeoffTesting.h"
#include "support/SourceTree.h"
#include "tables/TableReader.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using test::Cli;
using test::Pipe;

namespace {

const QString StoreyHead = u"构件编号,类别,材质,公称直径,水平管长度,立管长度,连接方式,楼层\n"_s;
const QString StoreyRows = u"1,%1,钢塑复合管,65,12.5,0,沟槽连接,1\n2,%1,钢塑复合管,65,1,0,沟槽连接,2\n"
                           "3,%1,奇怪的管,40,2,0,,1\n3,%1,奇怪的管,40,2,0,,1\n"_s;

/// The rules without the items of the first default rule, that of 给水管.
QByteArray WithBareDefault(const QByteArray& rules)
{
    const QByteArray end = "</Qd>";
    const qsizetype from = rules.indexOf("<Qd>", rules.indexOf("bDefault=\"1\""));
    return rules.left(from) + "<Qd/>" + rules.mid(rules.indexOf(end, from) + end.size());
}

/// Two configurations, 甲 and 乙, with the sample rules for 给排水, of which the default rule of 给水管 gives
/// nothing.
class ApplyCompare : public testing::Test
{
protected:
    ApplyCompare() : m_cli(u"bill"_s)
    {
        QFile rules(test::InSourceTree(u"samples/PlumbingRules.xml"_s));
        if (!rules.open(QIODevice::ReadOnly)) throw std::runtime_error("no sample rules");
        const QByteArray bytes = WithBareDefault(rules.readAll());
        m_cli.Folder().MakeFolder(u"project\\app\\自动套配置"_s);
        m_cli.Folder().WriteFile(Cli::RuleFile(u"甲"_s), bytes);
        m_cli.Folder().WriteFile(Cli::RuleFile(u"乙"_s), bytes);
        m_cli.Folder().WriteFile(u"t.csv"_s, (StoreyHead + StoreyRows.arg(Pipe)).toUtf8());
    }

    /// Adds a rule with a bill item for 奇怪的管 to 乙.
    void ChangeSecond() const
    {
        const QByteArray path = R"("path":{"category":"给排水\\管道\\给水管")";
        const test::Outcome added =
            m_cli.Batch("{\"op\":\"AddConfig\"," + path +
                            R"(},"conditions":[["材质","1","＝","","","奇怪的管","",""]]})" + "\n",
                        {u"--config"_s, u"乙"_s});
        ASSERT_EQ(added.status, 0) << added.err.toStdString();
        const QByteArray id = QByteArray::number(added.Lines().at(0).value(u"newId").toInt());
        const QByteArray script =
            "{\"op\":\"AddConfig\"," + path +
            R"(},"conditions":[["材质","1","＝","","","奇怪的管","",""]]})" + "\n" + "{\"op\":\"AddQd\"," +
            path + ",\"configId\":" + id +
            R"(},"qd":{"strQdId":"031001099001","strName":"怪管","strUnit":"m","strQdCode":"GB50856-2013","strFormula":"管道长度"}})" +
            "\n{\"op\":\"Save\"}\n";
        ASSERT_EQ(m_cli.Batch(script, {u"--config"_s, u"乙"_s}).status, 0);
    }
    test::Outcome Run(const QStringList& options = {}) const
    {
        return m_cli.RunInProject(
            QStringList{u"apply"_s, u"t.csv"_s, u"--config"_s, u"甲"_s, u"--compare"_s, u"乙"_s} + options);
    }

    Cli m_cli;
};

} // namespace

TEST_F(ApplyCompare, SaysSoWhenNothingChanges)
{
    const test::Outcome outcome = Run();
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.Out().contains(u"没有变化：4 个构件"_s)) << outcome.out.toStdString();
    const QJsonObject json = Run({u"--json"_s}).Json();
    EXPECT_EQ(json.value(u"changedComponents").toInt(), 0);
    EXPECT_TRUE(json.value(u"rows").toArray().isEmpty());
    EXPECT_TRUE(json.value(u"components").toArray().isEmpty());
}

TEST_F(ApplyCompare, TellsChangedComponentsAndRowsOfTheBill)
{
    ChangeSecond();
    const test::Outcome outcome = Run({u"--by"_s, u"楼层"_s});
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    for (const QString& text : {u"新增"_s, u"031001099001"_s, u"怪管"_s, u"2.00"_s, u"第 4 行"_s,
                                u"变化的构件 1 个，变化的清单行 1 行"_s, u"默认规则 1"_s, u"已套价 3"_s})
        EXPECT_TRUE(outcome.Out().contains(text)) << text.toStdString() << outcome.out.toStdString();
    EXPECT_FALSE(outcome.Out().contains(u"第 5 行"_s)) << "an id that came before changes nothing";
}

TEST_F(ApplyCompare, JsonHasBothSidesOfEveryChange)
{
    ChangeSecond();
    ASSERT_EQ(Run({u"-o"_s, u"变化.json"_s}).status, 0);
    const QJsonObject json = Run({u"--json"_s}).Json();
    EXPECT_EQ(QJsonDocument::fromJson(m_cli.Folder().ReadFile(u"变化.json"_s)).object(), json);
    EXPECT_EQ(json.value(u"changedComponents").toInt(), 1);
    const QJsonObject component = json.value(u"components").toArray().at(0).toObject();
    EXPECT_EQ(component.value(u"id").toString(), u"3"_s);
    EXPECT_TRUE(component.value(u"before").toObject().value(u"items").toArray().isEmpty());
    EXPECT_EQ(component.value(u"after").toObject().value(u"text").toString(), u"材质＝奇怪的管;"_s);
    const QJsonObject row = json.value(u"rows").toArray().at(0).toObject();
    EXPECT_FALSE(row.contains(u"before"));
    EXPECT_EQ(row.value(u"after").toObject().value(u"quantity").toString(), u"2.00"_s);
    EXPECT_EQ(json.value(u"after").toObject().value(u"priced").toInt(), 3);
}

TEST_F(ApplyCompare, TheOtherWayRoundTheRowIsGone)
{
    ChangeSecond();
    const test::Outcome outcome = m_cli.RunInProject(
        {u"apply"_s, u"t.csv"_s, u"--config"_s, u"乙"_s, u"--compare"_s, u"甲"_s, u"--json"_s});
    const QJsonObject row = outcome.Json().value(u"rows").toArray().at(0).toObject();
    EXPECT_TRUE(row.contains(u"before"));
    EXPECT_FALSE(row.contains(u"after"));
}

TEST_F(ApplyCompare, WorkbookGetsTwoMoreSheets)
{
    ChangeSecond();
    const test::Outcome outcome = Run({u"-o"_s, u"清单.xlsx"_s});
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    const CString path = m_cli.Folder().Path(u"清单.xlsx"_s);
    EXPECT_EQ(tables::OpenTable(path)->Sheets(),
              (CStringArray{u"工程量清单"_s, u"构件"_s, u"未套价及核对"_s, u"清单变化"_s, u"构件变化"_s}));
    const auto rows = tables::OpenTable(path, {.sheet = u"清单变化"_s});
    rows->Next();
    const tables::Row* const row = rows->Next();
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->cells[0].text.toString(), u"新增"_s);
    EXPECT_EQ(row->cells[2].text.toString(), u"031001099001"_s);
    EXPECT_EQ(row->cells[8].text.toString(), u"2"_s);
    EXPECT_EQ(rows->Next(), nullptr);
}

TEST_F(ApplyCompare, RowOfWhichOnlyTheFittingsChangeSaysSo)
{
    QByteArray rules = m_cli.Folder().ReadFile(Cli::RuleFile(u"乙"_s));
    rules.replace("strAnnex=\"是\"", "strAnnex=\"否\"");
    m_cli.Folder().WriteFile(Cli::RuleFile(u"乙"_s), rules);
    const test::Outcome outcome = Run();
    EXPECT_TRUE(outcome.Out().contains(u"带管道配件：是→否"_s)) << outcome.out.toStdString();
    const QJsonObject row = Run({u"--json"_s}).Json().value(u"rows").toArray().at(0).toObject();
    EXPECT_TRUE(row.value(u"before").toObject().value(u"withFittings").toBool());
    EXPECT_FALSE(row.value(u"after").toObject().value(u"withFittings").toBool(true));
    ASSERT_EQ(Run({u"-o"_s, u"清单.xlsx"_s}).status, 0);
    const auto rows = tables::OpenTable(m_cli.Folder().Path(u"清单.xlsx"_s), {.sheet = u"清单变化"_s});
    rows->Next();
    const tables::Row* const written = rows->Next();
    ASSERT_NE(written, nullptr);
    EXPECT_EQ(written->cells.back().text.toString(), u"带管道配件：是→否"_s);
}

TEST_F(ApplyCompare, QuotaRowsStandInTheColumnsOfTheBill)
{
    QByteArray rules = m_cli.Folder().ReadFile(Cli::RuleFile(u"乙"_s));
    rules.replace("strAnnex=\"是\"", "strAnnex=\"否\"");
    m_cli.Folder().WriteFile(Cli::RuleFile(u"乙"_s), rules);
    const QString told = Run({u"--by"_s, u"楼层"_s}).Out();
    QStringList lines = told.split(u'\n');
    const qsizetype head = lines.indexOf(QRegularExpression(u".*项目编码.*"_s));
    ASSERT_GE(head, 0) << told.toStdString();
    EXPECT_TRUE(lines.value(head + 1).startsWith(u"  1 "_s)) << told.toStdString();
    EXPECT_TRUE(lines.value(head + 2).startsWith(u"     "_s)) << "a quota row has no floor\n"
                                                              << told.toStdString();
}

TEST_F(ApplyCompare, RowThatLosesAQuantitySaysHowManyComponents)
{
    QByteArray rules = m_cli.Folder().ReadFile(Cli::RuleFile(u"乙"_s));
    rules.replace("strFormula=\"管道长度\"", "strFormula=\"没有的量\"");
    m_cli.Folder().WriteFile(Cli::RuleFile(u"乙"_s), rules);
    const test::Outcome outcome = Run();
    EXPECT_TRUE(outcome.Out().contains(u"缺工程量的构件：0→2"_s)) << outcome.out.toStdString();
}

TEST_F(ApplyCompare, RowThatDiffersBeforeRoundingOnlySaysSo)
{
    QByteArray rules = m_cli.Folder().ReadFile(Cli::RuleFile(u"乙"_s));
    rules.replace("strFormula=\"管道长度\"", "strFormula=\"管道长度+0.001\"");
    m_cli.Folder().WriteFile(Cli::RuleFile(u"乙"_s), rules);
    const QString remark = u"取位前的工程量不同"_s;
    EXPECT_TRUE(Run().Out().contains(remark));
    const QJsonObject row = Run({u"--json"_s}).Json().value(u"rows").toArray().at(0).toObject();
    EXPECT_EQ(row.value(u"before").toObject().value(u"quantity"),
              row.value(u"after").toObject().value(u"quantity"));
    EXPECT_EQ(row.value(u"remark").toString(), remark);
    ChangeSecond();
    const QJsonArray rows = Run({u"--json"_s}).Json().value(u"rows").toArray();
    EXPECT_TRUE(std::any_of(rows.begin(), rows.end(), [](const QJsonValue& added) {
        return !added[u"before"_s].isObject() && added[u"remark"_s].isString() &&
               added[u"remark"_s].toString().isEmpty();
    }));
}

TEST_F(ApplyCompare, CannotGoIntoCsvAndNeedsAFileThatIsThere)
{
    EXPECT_EQ(Run({u"-o"_s, u"清单.csv"_s}).status, 2);
    EXPECT_EQ(Run({u"-o"_s, u"清单.json"_s, u"--json"_s}).status, 2);
    EXPECT_EQ(m_cli.RunInProject({u"apply"_s, u"t.csv"_s, u"--compare"_s, u"没有"_s}).status, 1);
}
