#include "cli/commands/rules/ApplyCommand.h"

#include "cli/CliTesting.h"
#include "cli/InterruptingReads.h"
#include "cli/TakeoffTesting.h"
#include "cli/reading/Failure.h"
#include "embedded/TestProject.h"
#include "platform/Files.h"
#include "support/SourceTree.h"
#include "tables/TableReader.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::Cli;
using test::Head;
using test::Pipe;

namespace {

/// A project with a table and the full sample rules for 给排水.
class Takeoff : public testing::Test
{
protected:
    Takeoff() : m_cli(u"bill"_s) {}

    void Write(const QString& rows) const { m_cli.Folder().WriteFile(u"t.csv"_s, (Head + rows).toUtf8()); }
    test::Outcome Apply(const QStringList& options = {}) const
    {
        return m_cli.RunInProject(QStringList{u"apply"_s, u"t.csv"_s, u"--config"_s,
                                              test::InSourceTree(u"samples/PlumbingRules.xml"_s)} +
                                  options);
    }
    void ExpectRefused(const test::Outcome& outcome, const QString& reason) const
    {
        EXPECT_EQ(outcome.status, 1);
        EXPECT_TRUE(outcome.out.isEmpty()) << outcome.out.toStdString();
        EXPECT_TRUE(outcome.Err().contains(reason)) << outcome.err.toStdString();
    }

    Cli m_cli;
};

} // namespace

TEST_F(Takeoff, TerminalShowsTheBillWhatToLookAtAndTheCheckedSum)
{
    Write(u"1,a,%1,钢塑复合管,65,12.5,0,沟槽连接\n1,b,%1,钢塑复合管,65,1,0,沟槽连接\n3,c,给排水\\管道\\没有,,"
          u",,\n"
          "4,d,%1,钢塑复合管,DN65,2,0,沟槽连接\n5,e,%1,钢塑复合管,65,,0,沟槽连接\n"_s.arg(Pipe));
    const test::Outcome outcome = Apply();
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    for (const QString& text : {u"序号"_s, u"项目编码"_s, u"项目特征描述"_s, u"12.50"_s, u"第 3 行"_s,
                                u"构件编号重复，只计第一个"_s, u"没有这个类别：“给排水\\管道\\没有”"_s,
                                u"公称直径 的值“DN65”不在值列表中"_s, u"缺工程量：“水平管长度”没有值"_s,
                                u"构件 5 个 ＝ 已套价 2 ＋ 默认规则 1 ＋ 未套价 2"_s})
        EXPECT_TRUE(outcome.Out().contains(text)) << text.toStdString() << outcome.out.toStdString();
    EXPECT_TRUE(outcome.err.isEmpty());
}

TEST_F(Takeoff, BadTablesAreRefusedWithPlaceAndReason)
{
    Write(u"1,a,%1,钢管,65,1,2,x,7\n"_s.arg(Pipe));
    ExpectRefused(Apply(), u"第 2 行第 9 列"_s);
    m_cli.Folder().WriteFile(u"t.csv"_s, u"构件编号,材质\n"_s.toUtf8());
    ExpectRefused(Apply(), u"缺少列“类别”"_s);
    m_cli.Folder().WriteFile(u"t.csv"_s, QByteArray());
    ExpectRefused(Apply(), u"表是空的"_s);
    ExpectRefused(m_cli.RunInProject({u"apply"_s, u"none.csv"_s, u"--config"_s,
                                      test::InSourceTree(u"samples/PlumbingRules.xml"_s)}),
                  u"none.csv"_s);
    Write({});
    ExpectRefused(Apply({u"--sheet"_s, u"一"_s}), u"t.csv"_s);
    ExpectRefused(Apply({u"--by"_s, u"楼层"_s}), u"表里没有列“楼层”"_s);
}

TEST_F(Takeoff, TableWithoutComponentsGivesAnEmptyBill)
{
    Write({});
    EXPECT_TRUE(Apply().Out().contains(u"构件 0 个"_s));
}

TEST_F(Takeoff, FormIsThatOfTheNameAndAnExistingFileNeedsForce)
{
    Write(u"1,a,%1,钢塑复合管,65,12.5,0,沟槽连接\n"_s.arg(Pipe));
    EXPECT_EQ(Apply({u"-o"_s, u"out.txt"_s}).status, 2);
    m_cli.Folder().WriteFile(u"out.json"_s, "old");
    ExpectRefused(Apply({u"-o"_s, u"out.json"_s}), u"--force"_s);
    EXPECT_EQ(m_cli.Folder().ReadFile(u"out.json"_s), "old");
    EXPECT_EQ(Apply({u"-o"_s, u"out.json"_s, u"--force"_s}).status, 0);
    EXPECT_TRUE(m_cli.Folder().ReadFile(u"out.json"_s).contains("\"quantity\": \"12.50\""));
}

TEST_F(Takeoff, WorkbookHasTheBillEveryComponentAndWhatToLookAt)
{
    Write(u"1,a,%1,钢塑复合管,65,12.5,0,沟槽连接\n2,b,%1,钢塑复合管,65,0.25,0,沟槽连接\n3,c,不是,,,,\n"_s.arg(
        Pipe));
    ASSERT_EQ(Apply({u"-o"_s, u"out.xlsx"_s}).status, 0);
    const auto rows = [&](const CString& sheet) {
        QList<CStringArray> result;
        const auto reader =
            tables::OpenTable(m_cli.Folder().Path(u"out.xlsx"_s), {.sheet = sheet, .pulse = {}});
        while (const tables::Row* row = reader->Next()) {
            CStringArray& cells = result.emplace_back();
            for (const tables::Cell& cell : row->cells)
                cells.append(cell.text.toString());
        }
        return result;
    };
    const QList<CStringArray> bill = rows(u"工程量清单"_s);
    ASSERT_GE(bill.size(), 3) << "a bill row and a quota row below it";
    EXPECT_EQ(bill[0].first(6), (CStringArray{u"序号"_s, u"项目编码"_s, u"项目名称"_s, u"项目特征描述"_s,
                                              u"计量单位"_s, u"工程量"_s}));
    EXPECT_EQ(bill[1][0], u"1"_s);
    EXPECT_TRUE(bill[1][1].startsWith(u'0')) << "leading zeros survive";
    EXPECT_EQ(bill[1][5], u"12.75"_s);
    EXPECT_EQ(bill[2][0], CString());
    const QList<CStringArray> components = rows(u"构件"_s);
    ASSERT_EQ(components.size(), 4);
    EXPECT_EQ(components[1][4], u"已套价"_s);
    EXPECT_EQ(components[1][7], u"1"_s);
    EXPECT_EQ(components[2][9], u"0.25"_s);
    EXPECT_EQ(components[3][4], u"未套价"_s);
    const QList<CStringArray> told = rows(u"未套价及核对"_s);
    ASSERT_EQ(told.size(), 2);
    EXPECT_EQ(told[1][0], u"4"_s);
    EXPECT_TRUE(told[1][5].contains(u"没有这个类别"_s));
}

TEST(InterruptedApply, LeavesTheOldFileWheneverItComes)
{
    const test::TestProject project;
    project.Put();
    const test::TempFolder& temp = project.Temp();
    temp.WriteFile(u"t.csv"_s, (Head + u"1,a,%1,钢塑复合管,65,12.5,0,沟槽连接\n"_s.arg(Pipe)).toUtf8());
    const CArray<cli::Option> options =
        cli::ApplyCommand().Info().options + CArray<cli::Option>{{u"project"_s, u"DIR"_s, {}, {}}};
    const cli::Arguments arguments({u"--project"_s, project.Folder(), temp.Native(u"t.csv"_s), u"-o"_s,
                                    temp.Native(u"out.xlsx"_s), u"--force"_s, u"--config"_s,
                                    test::InSourceTree(u"samples/PlumbingRules.xml"_s)},
                                   options);
    int interrupted = 0;
    for (int opening = 1; opening < 20; ++opening) {
        temp.WriteFile(u"out.xlsx"_s, "old");
        const test::InterruptingReads files(u"t.csv"_s, opening);
        testing::internal::CaptureStdout();
        try {
            cli::ApplyCommand().Run(arguments);
        } catch (const cli::Refusal& refusal) {
            EXPECT_EQ(CString::fromUtf8(refusal.what()), u"已取消，没有写出"_s);
            ++interrupted;
        }
        testing::internal::GetCapturedStdout();
        if (!files.HasCome()) break;
        EXPECT_EQ(temp.ReadFile(u"out.xlsx"_s), "old") << opening;
        EXPECT_EQ(QDir(temp.Native({})).entryList(QDir::Files).size(), 2) << "nothing is left beside it";
    }
    EXPECT_GE(interrupted, 3) << "while it is read, and while each of the sheets is written";
    EXPECT_TRUE(temp.ReadFile(u"out.xlsx"_s).startsWith("PK"));
}
