#include "cli/commands/rules/CompareCommand.h"

#include "cli/CliTesting.h"
#include "cli/InterruptingReads.h"
#include "cli/commands/rules/PipeFile.h"
#include "cli/reading/Failure.h"
#include "embedded/TestProject.h"
#include "support/SourceTree.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::Cli;
using test::PipeElement;
using test::PipeFile;

namespace {

class CompareVerb : public testing::Test
{
protected:
    test::Outcome Compare(const QStringList& options = {}) const
    {
        return m_cli.Run(QStringList{u"compare"_s, u"a.xml"_s, u"b.xml"_s} + options);
    }
    void Write(const QByteArray& a, const QByteArray& b) const
    {
        m_cli.Folder().WriteFile(u"a.xml"_s, a);
        m_cli.Folder().WriteFile(u"b.xml"_s, b);
    }

    Cli m_cli;
};

} // namespace

TEST_F(CompareVerb, TellsRulesWithoutAProject)
{
    Write(PipeFile(PipeElement(2, "钢管") + PipeElement(3, "铜管")),
          PipeFile(PipeElement(3, "铜管") + PipeElement(2, "钢管", "个数")));
    const test::Outcome outcome = Compare();
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.Out().startsWith(u"给排水\\管道\\给水管\n"_s)) << outcome.out.toStdString();
    EXPECT_TRUE(outcome.Out().contains(u"工程量 管道长度 改为 个数"_s)) << outcome.out.toStdString();
    EXPECT_TRUE(outcome.Out().contains(u"改了 1 条，移动了 1 条"_s)) << outcome.out.toStdString();
    EXPECT_TRUE(outcome.err.isEmpty());
}

TEST_F(CompareVerb, SaysSoWhenNothingDiffers)
{
    Write(PipeFile(PipeElement(2, "钢管")), PipeFile(PipeElement(2, "钢管")));
    EXPECT_EQ(Compare().Out(), u"规则没有差别。\n"_s);
}

TEST_F(CompareVerb, JsonHasCountsCategoriesAndDetails)
{
    Write(PipeFile(PipeElement(2, "钢管")),
          PipeFile(PipeElement(2, "钢管", "个数") + PipeElement(5, "铜管")));
    const test::Outcome outcome = Compare({u"--json"_s});
    EXPECT_EQ(outcome.status, 0);
    const QJsonObject json = outcome.Json();
    EXPECT_EQ(json[u"added"_s].toInt(), 1);
    EXPECT_EQ(json[u"changed"_s].toInt(), 1);
    EXPECT_EQ(json[u"moved"_s].toInt(-1), 0);
    const QJsonObject category = json[u"categories"_s].toArray()[0].toObject();
    EXPECT_EQ(category[u"category"_s].toString(), u"给排水\\管道\\给水管"_s);
    const QJsonArray rules = category[u"rules"_s].toArray();
    ASSERT_EQ(rules.size(), 2);
    EXPECT_EQ(rules[0][u"change"_s].toString(), u"changed"_s);
    EXPECT_EQ(rules[0][u"before"_s].toInt(), 1);
    EXPECT_EQ(rules[0][u"details"_s].toArray()[0].toString(),
              u"清单 031001001 镀锌钢管：工程量 管道长度 改为 个数"_s);
    EXPECT_EQ(rules[1][u"change"_s].toString(), u"added"_s);
    EXPECT_FALSE(rules[1].toObject().contains(u"before"_s));
    EXPECT_EQ(rules[1][u"id"_s].toInt(), 5);
}

TEST_F(CompareVerb, BadInputIsRefusedWithItsPlace)
{
    Write(PipeFile({}), "<a>\n<b></a>");
    EXPECT_EQ(Compare().status, 1);
    EXPECT_TRUE(Compare().Err().contains(u"第 2 行"_s)) << Compare().err.toStdString();
    Write(PipeFile({}), "<other/>");
    EXPECT_EQ(Compare().status, 1);
    EXPECT_EQ(m_cli.Run({u"compare"_s, u"a.xml"_s, u"none.xml"_s}).status, 1);
    EXPECT_EQ(m_cli.Run({u"compare"_s, u"a.xml"_s}).status, 2);
    EXPECT_EQ(m_cli.Run({u"compare"_s, u"a.xml"_s, u"a.xml"_s, u"a.xml"_s}).status, 2);
    EXPECT_EQ(m_cli.Run({u"compare"_s, u"a.xml"_s, u"a.xml"_s, u"--sheet"_s, u"x"_s}).status, 2);
    EXPECT_EQ(m_cli.Run({u"compare"_s, u"a.xml"_s, u"a.xml"_s, u"--on"_s, u"t.csv"_s}).status, 2)
        << "components need a project";
}

TEST_F(CompareVerb, DefaultRulesThatAnEditorCompletesAreOneLine)
{
    const Cli cli(u"bill"_s);
    cli.Folder().MakeFolder(u"project\\app\\自动套配置"_s);
    cli.Folder().WriteFile(Cli::RuleFile(), PipeFile(PipeElement(2, "钢管")));
    cli.Folder().WriteFile(u"a.xml"_s, PipeFile(PipeElement(2, "钢管")));
    ASSERT_EQ(cli.Batch("{\"op\":\"Save\"}\n").status, 0);
    const test::Outcome outcome = cli.RunInProject({u"compare"_s, u"./a.xml"_s, u"DefaultConfig"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.Out().count(u'\n'), 2) << outcome.out.toStdString();
    EXPECT_TRUE(outcome.Out().contains(u"个小类的空默认规则"_s)) << outcome.out.toStdString();
}

namespace {

class CompareOnTakeoff : public testing::Test
{
protected:
    CompareOnTakeoff() : m_cli(u"bill"_s)
    {
        QFile file(test::InSourceTree(u"samples/PlumbingRules.xml"_s));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray rules = file.readAll();
        m_cli.Folder().WriteFile(u"a.xml"_s, rules);
        m_cli.Folder().WriteFile(u"b.xml"_s, rules);
    }

    test::Outcome Compare(const QStringList& options = {}) const
    {
        return m_cli.RunInProject(QStringList{u"compare"_s, u"./a.xml"_s, u"./b.xml"_s, u"--on"_s,
                                              test::InSourceTree(u"samples/PlumbingTakeoff.csv"_s)} +
                                  options);
    }

    Cli m_cli;
};

} // namespace

TEST_F(CompareOnTakeoff, EqualRulesChangeNoComponent)
{
    const QJsonObject json = Compare({u"--json"_s}).Json()[u"on"_s].toObject();
    EXPECT_GT(json[u"before"_s][u"components"_s].toInt(), 0);
    EXPECT_EQ(json[u"changedComponents"_s].toInt(-1), 0);
    EXPECT_TRUE(json[u"components"_s].toArray().isEmpty());
}

TEST_F(CompareOnTakeoff, ComponentsThatGetOtherItemsAreNamedWithBoth)
{
    QByteArray rules = m_cli.Folder().ReadFile(u"b.xml"_s);
    rules.replace("strQdId=\"0310", "strQdId=\"9910");
    m_cli.Folder().WriteFile(u"b.xml"_s, rules);
    const test::Outcome outcome = Compare();
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.Out().contains(u"变化的构件"_s)) << outcome.out.toStdString();
    const QJsonArray changed = Compare({u"--json"_s}).Json()[u"on"_s][u"components"_s].toArray();
    ASSERT_FALSE(changed.isEmpty());
    EXPECT_FALSE(changed[0][u"id"_s].toString().isEmpty());
    EXPECT_TRUE(changed[0][u"before"_s][u"items"_s][0][u"number"_s].toString().startsWith(u"0310"_s));
    EXPECT_TRUE(changed[0][u"after"_s][u"items"_s][0][u"number"_s].toString().startsWith(u"9910"_s));
}

TEST_F(CompareOnTakeoff, TableThatCannotBeReadIsRefused)
{
    EXPECT_EQ(m_cli.RunInProject({u"compare"_s, u"./a.xml"_s, u"./b.xml"_s, u"--on"_s, u"none.csv"_s}).status,
              1);
}

TEST(InterruptedCompare, SaysThatItWasCancelled)
{
    const test::TestProject project;
    project.Put();
    const test::TempFolder& temp = project.Temp();
    temp.WriteFile(u"t.csv"_s, "构件编号,类别,材质\n1,给排水\\管道\\给水管,铜管\n");
    const CArray<cli::Option> options =
        cli::CompareCommand().Info().options + CArray<cli::Option>{{u"project"_s, u"DIR"_s, {}, {}}};
    const QString rules = test::InSourceTree(u"samples/PlumbingRules.xml"_s);
    const cli::Arguments arguments(
        {u"--project"_s, project.Folder(), rules, rules, u"--on"_s, temp.Native(u"t.csv"_s)}, options);
    const test::InterruptingReads files(u"t.csv"_s, 1);
    CString told;
    try {
        cli::CompareCommand().Run(arguments);
    } catch (const cli::Refusal& refusal) {
        told = CString::fromUtf8(refusal.what());
    }
    EXPECT_EQ(told, u"已取消"_s);
}
