#include "cli/CliTesting.h"
#include "support/StrictXml.h"

#include <QtCore/QJsonArray>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::Cli;

namespace {

constexpr char AddPipeRule[] = R"({"op":"AddConfig","path":{"category":"给排水\\管道\\给水管"}})"
                               "\n";
constexpr char SaveLine[] = "{\"op\":\"Save\"}\n";
constexpr char Refused[] = R"({"op":"AddConfig","path":{"specId":1}})"
                           "\n";

/// A request on the rule of that id in 给水管.
QByteArray OnRule(const QByteArray& op, int rule, const QByteArray& more = {},
                  const QByteArray& morePath = {})
{
    return "{\"op\":\"" + op + R"(","path":{"category":"给排水\\管道\\给水管","configId":)" +
           QByteArray::number(rule) + morePath + "}" + more + "}\n";
}

QStringList Keys(const QJsonObject& object)
{
    return object.keys();
}

} // namespace

TEST(Batch, AnswersNameLineOperationAndOutcome)
{
    const Cli cli(u"bill"_s);
    const test::Outcome outcome = cli.Batch(QByteArray("\n  \n") + AddPipeRule + "\r\n" + SaveLine);
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    const QList<QJsonObject> lines = outcome.Lines();
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0],
              (QJsonObject{{u"line"_s, 3}, {u"op"_s, u"AddConfig"_s}, {u"ok"_s, true}, {u"newId"_s, 2}}));
    EXPECT_EQ(lines[1], (QJsonObject{{u"line"_s, 5}, {u"op"_s, u"Save"_s}, {u"ok"_s, true}}));
}

TEST(Batch, ScriptFileAndStandardInputDoTheSame)
{
    const Cli cli(u"bill"_s);
    cli.Folder().WriteFile(u"script.jsonl"_s, QByteArray(AddPipeRule) + "{\"op\":\"Save\"}");
    const test::Outcome outcome = cli.RunInProject({u"batch"_s, u"script.jsonl"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.Lines().size(), 2);
    EXPECT_EQ(cli.RunInProject({u"batch"_s, u"none.jsonl"_s}).status, 1);
}

TEST(Batch, NothingIsSavedUnlessTheScriptSaysSo)
{
    const Cli cli(u"bill"_s);
    cli.Batch(SaveLine);
    const QByteArray before = cli.Folder().ReadFile(Cli::RuleFile());
    EXPECT_EQ(cli.Batch(AddPipeRule).status, 0);
    EXPECT_EQ(cli.Folder().ReadFile(Cli::RuleFile()), before);
    EXPECT_EQ(cli.Batch(QByteArray(AddPipeRule) + SaveLine).status, 0);
    EXPECT_NE(cli.Folder().ReadFile(Cli::RuleFile()), before);
}

TEST(Batch, FirstRefusedOperationEndsItAndNothingIsSavedAfterIt)
{
    const Cli cli(u"bill"_s);
    cli.Batch(SaveLine);
    const QByteArray before = cli.Folder().ReadFile(Cli::RuleFile());
    const test::Outcome outcome = cli.Batch(QByteArray(AddPipeRule) + Refused + SaveLine);
    EXPECT_EQ(outcome.status, 1);
    ASSERT_EQ(outcome.Lines().size(), 2);
    EXPECT_EQ(outcome.Lines()[1].value(u"ok"_s), QJsonValue(false));
    EXPECT_FALSE(outcome.Lines()[1].contains(u"error"_s));
    EXPECT_TRUE(outcome.Err().contains(u"第 2 行 AddConfig"_s));
    EXPECT_EQ(cli.Folder().ReadFile(Cli::RuleFile()), before);
}

TEST(Batch, KeepGoingRunsTheRestAndStillEndsWithOne)
{
    const Cli cli(u"bill"_s);
    const test::Outcome outcome =
        cli.Batch(QByteArray(Refused) + AddPipeRule + Refused + SaveLine, {u"--keep-going"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.Lines().size(), 4);
    EXPECT_TRUE(outcome.Err().contains(u"第 1 行 AddConfig"_s));
    EXPECT_TRUE(outcome.Err().contains(u"第 3 行 AddConfig"_s));
    EXPECT_TRUE(cli.Folder().ReadFile(Cli::RuleFile()).contains("LastConfigId=\"2\""));
}

TEST(Batch, RaisedErrorIsAnsweredAsErrorAndCountsAsFailure)
{
    const Cli cli(u"bill"_s);
    const test::Outcome outcome = cli.Batch(OnRule("DelConfig", 1) + AddPipeRule + SaveLine);
    EXPECT_EQ(outcome.status, 1);
    ASSERT_EQ(outcome.Lines().size(), 2);
    EXPECT_FALSE(outcome.Lines()[1].value(u"error"_s).toString().isEmpty());
    EXPECT_EQ(outcome.Lines()[1].value(u"ok"_s), QJsonValue(false));
    EXPECT_TRUE(outcome.Err().contains(u"第 2 行 AddConfig"_s));
}

TEST(Batch, MoveDownOfASingleRuleIsAnsweredAsError)
{
    const test::Outcome outcome = Cli(u"bill"_s).Batch(OnRule("MoveDownConfig", 1));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.Lines().value(0).contains(u"error"_s));
}

TEST(Batch, PathTakesIdsInPlaceOfACategory)
{
    const test::Outcome outcome = Cli(u"bill"_s).Batch(
        R"({"op":"AddConfig","path":{"specId":1,"lMemberId":101,"sMemberId":10101,"spareId":5}})");
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.Lines().value(0).value(u"newId"_s).toInt(), 2);
}

TEST(Batch, GetConfigGivesOneRuleWhenThePathNamesOneElseAll)
{
    const Cli cli(u"bill"_s);
    const QByteArray all = R"({"op":"GetConfig","path":{"category":"给排水\\管道\\给水管"}})"
                           "\n";
    const test::Outcome outcome = cli.Batch(AddPipeRule + all + OnRule("GetConfig", 2) +
                                            OnRule("GetConfig", 0) + OnRule("GetConfig", 9));
    EXPECT_EQ(outcome.status, 1);
    const QList<QJsonObject> lines = outcome.Lines();
    ASSERT_EQ(lines.size(), 5);
    EXPECT_EQ(lines[1].value(u"rules"_s).toArray().size(), 2);
    ASSERT_EQ(lines[2].value(u"rules"_s).toArray().size(), 1);
    EXPECT_EQ(lines[2].value(u"rules"_s).toArray()[0].toObject().value(u"id"_s).toInt(), 2);
    EXPECT_EQ(lines[3].value(u"rules"_s), lines[1].value(u"rules"_s)) << "0 is the same as no rule";
    EXPECT_EQ(lines[4].value(u"ok"_s), QJsonValue(false));
    EXPECT_FALSE(lines[4].contains(u"rules"_s));
}

TEST(Batch, AddedItemsComeBackInTheRules)
{
    const Cli cli(u"bill"_s);
    const test::Outcome outcome =
        cli.Batch(OnRule("AddQd", 1, R"(,"qd":{"strQdId":"031001001001","strName":"镀锌钢管"})") +
                  OnRule("AddDe2QdNode", 1, R"(,"de":{"strDeId":"示10-1-1"})", ",\"qdId\":1") +
                  OnRule("AddDe2ConfigNode", 1, R"(,"de":{"strDeId":"示10-1-2"})") +
                  OnRule("AddCondition", 1, R"(,"array":["材质","1","＝","","","铜管","",""])") +
                  OnRule("DelCondition", 1, {}, ",\"conditionId\":9") + OnRule("GetExistQdIndex", 1));
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    const QList<QJsonObject> lines = outcome.Lines();
    ASSERT_EQ(lines.size(), 6);
    EXPECT_TRUE(lines[2].contains(u"rules"_s));
    EXPECT_EQ(Keys(lines[3]), (QStringList{u"line"_s, u"ok"_s, u"op"_s}));
    const QJsonObject rule = lines[4].value(u"rules"_s).toArray()[0].toObject();
    const QJsonObject bill = rule.value(u"qd"_s).toArray()[0].toObject();
    EXPECT_EQ(bill.value(u"strName"_s).toString(), u"镀锌钢管"_s);
    EXPECT_EQ(bill.value(u"de"_s).toArray()[0].toObject().value(u"strDeId"_s).toString(), u"示10-1-1"_s);
    EXPECT_EQ(rule.value(u"de"_s).toArray()[0].toObject().value(u"strDeId"_s).toString(), u"示10-1-2"_s);
    EXPECT_EQ(rule.value(u"conditions"_s).toArray().size(), 1);
    EXPECT_EQ(lines[5].value(u"indexes"_s).toArray(), (QJsonArray{u"031001001001"_s}));
}

TEST(Batch, ConditionOfSevenTextsIsRefusedByThePresenter)
{
    const test::Outcome outcome =
        Cli(u"bill"_s).Batch(OnRule("AddCondition", 1, R"(,"array":["","","","","","",""])"));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_FALSE(outcome.Lines().value(0).contains(u"error"_s));
}

TEST(Batch, ConfigNamesAnotherFileThatIsMadeWhenItIsMissing)
{
    const Cli cli(u"bill"_s);
    EXPECT_EQ(cli.Batch(QByteArray(AddPipeRule) + SaveLine, {u"--config"_s, u"./other.xml"_s}).status, 0);
    EXPECT_TRUE(test::IsStrictXml(cli.Folder().ReadFile(u"other.xml"_s)));
    EXPECT_FALSE(cli.Folder().Exists(Cli::RuleFile()));
}

TEST(Batch, ConfigurationIsMadeInAProjectThatHasNoRuleFolderYet)
{
    const Cli cli(u"bill"_s);
    EXPECT_EQ(cli.Batch(SaveLine, {u"--config"_s, u"按名"_s}).status, 0);
    EXPECT_TRUE(test::IsStrictXml(cli.Folder().ReadFile(Cli::RuleFile(u"按名"_s))));
    const Cli other(u"bill"_s);
    EXPECT_EQ(other.Batch(R"({"op":"SaveAs","file":"另存"})", {u"--config"_s, u"./other.xml"_s}).status, 0);
    EXPECT_TRUE(test::IsStrictXml(other.Folder().ReadFile(Cli::RuleFile(u"另存"_s))));
}

TEST(Batch, FieldsThatALineDoesNotNameComeFromTheLibraryInUse)
{
    const Cli cli(u"bill"_s);
    const test::Outcome outcome = cli.Batch(
        OnRule("AddQd", 1, R"(,"qd":{"strQdId":"031001001002","strName":"镀锌钢管 DN20"})") +
        OnRule("AddDe2QdNode", 1, R"(,"de":{"strDeId":"示10-1-1"})", ",\"qdId\":1") +
        OnRule("AddQd", 1, R"(,"qd":{"strQdId":"99","strUnit":"10m","strQdCode":""})") +
        OnRule("ResetQd", 1, R"(,"qd":{"strQdId":"031001001002","strUnit":"100m"})", ",\"qdId\":2") +
        OnRule("GetConfig", 1));
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    const auto billsOf = [&](int line) {
        const QJsonArray rules = outcome.Lines().value(line).value(u"rules"_s).toArray();
        return rules[0].toObject().value(u"qd"_s).toArray();
    };
    const auto texts = [](const QJsonObject& item, const QStringList& names) {
        QStringList values;
        for (const QString& name : names)
            values.append(item.value(name).toString());
        return values.join(u'|');
    };
    const QStringList common{u"strName"_s, u"strUnit"_s, u"strUnitCode"_s, u"strFormula"_s, u"strAnnex"_s};
    const QJsonArray bills = billsOf(2);
    EXPECT_EQ(texts(bills[0].toObject(), common + QStringList{u"strQdCode"_s}),
              u"镀锌钢管 DN20|m|1|管道长度|是|GB50856-2013"_s);
    EXPECT_EQ(texts(bills[0].toObject().value(u"de"_s).toArray()[0].toObject(),
                    common + QStringList{u"strDeCode"_s}),
              u"室内镀锌钢管 螺纹连接 公称直径(mm以内)15|10m|10|管道长度|是|DEMO-QDDE-2024"_s);
    EXPECT_EQ(texts(bills[1].toObject(), common + QStringList{u"strQdCode"_s}), u"|10m||||"_s)
        << "unknown to the library, and the code named";
    EXPECT_EQ(texts(billsOf(4)[1].toObject(), common + QStringList{u"strQdCode"_s}),
              u"镀锌钢管|100m|100|管道长度|是|GB50856-2013"_s)
        << "a unit that is named has the code of its own number";
}

TEST(Batch, ItemOfTheManualsExampleIsOneThatTheDialogsShow)
{
    const Cli cli(u"bill"_s);
    const test::Outcome outcome =
        cli.Batch(OnRule("AddQd", 1, R"(,"qd":{"strQdId":"031001001002","strName":"镀锌钢管"})") + SaveLine);
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(cli.Folder().ReadFile(Cli::RuleFile()).contains("strQdCode=\"GB50856-2013\""));
}

TEST(Batch, ConfigThatIsNoRuleFileIsRefusedBeforeAnythingRuns)
{
    const Cli cli(u"bill"_s);
    cli.Folder().WriteFile(u"bad.xml"_s, "<other/>");
    const test::Outcome outcome = cli.Batch(SaveLine, {u"--config"_s, u"bad.xml"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.out.isEmpty());
    EXPECT_EQ(cli.Folder().ReadFile(u"bad.xml"_s), "<other/>");
}

TEST(Batch, ReLoadOfAMissingFileWarnsOnStandardError)
{
    const test::Outcome outcome = Cli(u"bill"_s).Batch(R"({"op":"ReLoad","file":"./none.xml"})");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.Err().contains(u"文件不存在，请重新选择调用文件!"_s));
    EXPECT_TRUE(outcome.Err().contains(u"第 1 行 ReLoad"_s));
}

TEST(Batch, SpecEditsAnotherSpecialty)
{
    const Cli cli(u"bill"_s);
    const QByteArray line = R"({"op":"AddConfig","path":{"category":"电气\\电缆桥架\\桥架"}})"
                            "\n";
    EXPECT_EQ(cli.Batch(line).status, 1) << "the project is in 给排水";
    EXPECT_EQ(cli.Batch(line + SaveLine, {u"--spec"_s, u"电气"_s}).status, 0);
    EXPECT_TRUE(cli.Folder().ReadFile(Cli::RuleFile()).contains("<电气"));
}

TEST(Batch, EmptyScriptDoesNothing)
{
    const test::Outcome outcome = Cli(u"bill"_s).Batch("\n\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.out.isEmpty());
}

TEST(Batch, NewRuleMayComeWithItsConditions)
{
    const Cli cli(u"bill"_s);
    const QByteArray conditions =
        R"([["材质","1","＝","","","铜\"管\\","",""],["公称直径","0","","＞","≤","","15","20"]])";
    const QByteArray line = QByteArray(AddPipeRule).chopped(2) + ",\"conditions\":" + conditions + "}\n";
    const test::Outcome outcome = cli.Batch(line + OnRule("GetConfig", 2));
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    const QJsonObject rule = outcome.Lines().at(1).value(u"rules").toArray().at(0).toObject();
    EXPECT_TRUE(rule.value(u"text").toString().contains(u"铜\"管\\"_s)) << outcome.out.toStdString();
    EXPECT_TRUE(rule.value(u"text").toString().contains(u"15＜公称直径≤20"_s)) << outcome.out.toStdString();
}

TEST(Batch, NewRuleOfWhichAConditionIsRefusedIsNotThere)
{
    const Cli cli(u"bill"_s);
    const QByteArray line = QByteArray(AddPipeRule).chopped(2) +
                            R"(,"conditions":[["材质","1","＝","","","铜管","",""],["材质"]]})" + "\n";
    const test::Outcome outcome =
        cli.Batch(line + R"({"op":"GetConfig","path":{"category":"给排水\\管道\\给水管"}})" + "\n",
                  {u"--keep-going"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_FALSE(outcome.Lines().at(0).value(u"ok").toBool());
    EXPECT_EQ(outcome.Lines().at(1).value(u"rules").toArray().size(), 1) << outcome.out.toStdString();
    EXPECT_EQ(cli.Batch(QByteArray(AddPipeRule).chopped(2) + ",\"conditions\":[7]}\n").status, 1);
}
