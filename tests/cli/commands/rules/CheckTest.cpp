#include "cli/CliTesting.h"
#include "cli/TakeoffTesting.h"
#include "support/SourceTree.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QSet>

#include <gtest/gtest.h>

#if !defined(_WIN32)
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;
using test::Cli;

namespace {

QByteArray Condition(int id, const char* attribute, const char* sign, const char* value)
{
    return "<condition id=\"" + QByteArray::number(id) + "\" strCFType=\"" + attribute +
           "\" bEqual=\"true\" strEqualoperator=\"" + sign + "\" strValue=\"" + value + "\"/>";
}

QByteArray Range(int id, const char* attribute, const char* lower, const char* upper)
{
    return "<condition id=\"" + QByteArray::number(id) + "\" strCFType=\"" + attribute +
           "\" bEqual=\"false\" strRangeoperator1=\"＞\" strRange1=\"" + lower +
           "\" strRangeoperator2=\"≤\" strRange2=\"" + upper + "\"/>";
}

QByteArray Quota(int id, const char* multiple)
{
    return "<De id=\"" + QByteArray::number(id) +
           "\" strName=\"室内镀锌钢管\" strUnit=\"10m\" strUnitCode=\"" + multiple +
           "\" strDeId=\"示10-1-7\" strDeCode=\"DEMO-QDDE-2024\" strFormula=\"管道长度\" strAnnex=\"是\"/>";
}

QByteArray Rule(int id, const QByteArray& conditions, const char* suffix,
                const QByteArray& quotas = Quota(1, "10"))
{
    return "<Config id=\"" + QByteArray::number(id) + "\" bDefault=\"0\"><Condition>" + conditions +
           "</Condition><Qd><qd id=\"1\" strQdId=\"031001001" + suffix +
           "\" strName=\"镀锌钢管\" strUnit=\"m\" strUnitCode=\"1\" strQdCode=\"GB50856-2013\" "
           "strFormula=\"管道长度\" strAnnex=\"是\"><De>" +
           quotas + "</De></qd></Qd><De/></Config>";
}

const QByteArray Default = "<Config id=\"1\" bDefault=\"1\"/>";

QByteArray FileWith(const QByteArray& list, const QByteArray& more = {})
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><自动套清单定额配置信息 Version=\"1\"><给排水 id=\"1\" "
           "name=\"给排水\"><LMember id=\"101\" name=\"管道\"><SMember id=\"10101\" "
           "name=\"给水管\"><Config>" +
           list + "</Config></SMember>" + more + "</LMember></给排水></自动套清单定额配置信息>";
}

/// Rules with a fault of each kind that can be mended, and nothing else.
QByteArray MendableList()
{
    return Rule(2, Condition(1, "材质", "=", "镀锌钢管"), "001") +
           Rule(3, Range(1, "公称直径", "50", "25") + Condition(2, "材质", "＝", "PPR管"), "002") +
           Rule(4, Condition(1, "公称直径", "＝", "６５") + Condition(2, "材质", "＝", "镀锌钢管"), "003",
                Quota(1, "1")) +
           Rule(5, Condition(1, "材质", "＝", "PPR管"), "004", Quota(1, "10") + Quota(2, "10")) +
           Rule(6, Condition(1, "材质", "＝", "PPR管"), "005") + Default +
           "<Config id=\"9\" bDefault=\"1\"/>";
}

class Check : public testing::Test
{
protected:
    Check() : m_cli(u"bill"_s) {}

    test::Outcome Run(const QByteArray& file, const QStringList& words = {}) const
    {
        m_cli.Folder().WriteFile(u"rules.xml"_s, file);
        return RunAgain(words);
    }
    test::Outcome RunAgain(const QStringList& words = {}) const
    {
        return m_cli.RunInProject(QStringList{u"check"_s, u"--config"_s, u"rules.xml"_s} + words);
    }

    static QStringList Codes(const QJsonObject& json)
    {
        QStringList codes;
        for (const auto& finding : json[u"findings"_s].toArray())
            codes.append(finding.toObject()[u"code"_s].toString());
        return codes;
    }

    Cli m_cli;
};

} // namespace

TEST_F(Check, GoodRulesHaveNoFindingAndStatusZero)
{
    const test::Outcome outcome =
        Run(FileWith(Rule(2, Condition(1, "材质", "＝", "镀锌钢管"), "001") + Default),
            {u"--fail-on"_s, u"warning"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.Out(), u"没有发现问题\n"_s);
    EXPECT_TRUE(outcome.err.isEmpty());
}

TEST_F(Check, TellsCategoryPlaceSeverityCodeAndSentence)
{
    const QByteArray file = FileWith(Rule(2, Condition(1, "材质", "＝", "PPR管"), "001") +
                                     Rule(3, Condition(1, "材质", "＝", "PPR管"), "002") + Default);
    const test::Outcome outcome = Run(file);
    EXPECT_EQ(outcome.status, 1);
    for (const QString& text : {test::Pipe + u'\n', u"第 2 条"_s, u"错误"_s, u"never-applies"_s,
                                u"它的构件都先归了前面的第 1 条规则"_s, u"错误 1 处，警告 0 处，提示 0 处"_s})
        EXPECT_TRUE(outcome.Out().contains(text)) << text.toStdString() << outcome.out.toStdString();
    EXPECT_TRUE(outcome.Err().contains(u"检查没有通过"_s)) << outcome.err.toStdString();
    EXPECT_EQ(m_cli.Folder().ReadFile(u"rules.xml"_s), file) << "nothing is written";
}

TEST_F(Check, StatusGoesByTheLevelThatIsAskedFor)
{
    const QByteArray warning = FileWith(Rule(2, {}, "001"));
    EXPECT_EQ(Run(warning).status, 0) << "warnings only";
    EXPECT_EQ(RunAgain({u"--fail-on"_s, u"error"_s}).status, 0);
    EXPECT_EQ(RunAgain({u"--fail-on=warning"_s}).status, 1);
    const QByteArray error = FileWith(Rule(2, Condition(1, "材质", "=", "PPR管"), "001") + Default);
    EXPECT_EQ(Run(error).status, 1);
    EXPECT_EQ(RunAgain({u"--fail-on"_s, u"never"_s}).status, 0);
    EXPECT_EQ(RunAgain({u"--fail-on"_s, u"note"_s}).status, 2);
    EXPECT_EQ(RunAgain({u"surplus"_s}).status, 2);
}

TEST_F(Check, FileThatCannotBeReadIsRefusedWithTheReason)
{
    const test::Outcome broken = Run("<a><b></a>", {u"--fail-on"_s, u"never"_s});
    EXPECT_EQ(broken.status, 1);
    EXPECT_TRUE(broken.Err().contains(u"第 1 行"_s)) << broken.err.toStdString();
    const test::Outcome missing = m_cli.RunInProject({u"check"_s, u"--config"_s, u"none.xml"_s});
    EXPECT_EQ(missing.status, 1);
    EXPECT_TRUE(missing.Err().contains(u"规则文件不存在"_s));
    EXPECT_FALSE(m_cli.Folder().Exists(u"none.xml"_s));
}

TEST_F(Check, CategoryIsNamedByItsFullTextItsBeginningOrItsOwnName)
{
    const QByteArray file = FileWith(Rule(2, Condition(1, "材质", "=", "PPR管"), "001") + Default,
                                     "<SMember id=\"10102\" name=\"热水管\"/>");
    EXPECT_EQ(Codes(Run(file, {u"--json"_s}).Json()), (QStringList{u"unknown-operator"_s, u"no-default"_s}));
    for (const QString& name : {test::Pipe, u"给水管"_s})
        EXPECT_EQ(Codes(RunAgain({u"--json"_s, u"--category"_s, name}).Json()),
                  QStringList{u"unknown-operator"_s});
    EXPECT_EQ(RunAgain({u"--category"_s, u"热水管"_s}).status, 0);
    EXPECT_EQ(Codes(RunAgain({u"--json"_s, u"--category"_s, u"给排水\\管道"_s}).Json()).size(), 2);
    const test::Outcome unknown = RunAgain({u"--category"_s, u"水管"_s});
    EXPECT_EQ(unknown.status, 1);
    EXPECT_TRUE(unknown.Err().contains(u"没有类别“水管”"_s));
}

TEST_F(Check, JsonCarriesPlacesOtherRulesAndMends)
{
    const QJsonObject json = Run(FileWith(Rule(2, Condition(1, "材质", "＝", "PPR管"), "001") +
                                          Rule(3, Condition(1, "材质", "＝", "PPR管"), "002") + Default),
                                 {u"--json"_s})
                                 .Json();
    EXPECT_EQ(json[u"mode"_s].toString(), u"bill"_s);
    EXPECT_EQ(json[u"totals"_s][u"error"_s].toInt(), 1);
    const QJsonObject finding = json[u"findings"_s].toArray().first().toObject();
    EXPECT_EQ(finding[u"severity"_s].toString(), u"error"_s);
    EXPECT_EQ(finding[u"category"_s].toString(), test::Pipe);
    EXPECT_EQ(finding[u"rule"_s].toInt(), 2);
    EXPECT_EQ(finding[u"id"_s].toInt(), 3);
    EXPECT_EQ(finding[u"others"_s].toArray().size(), 1);
    EXPECT_EQ(finding[u"others"_s].toArray()[0].toInt(), 1);
    EXPECT_EQ(finding[u"mend"_s][u"op"_s].toString(), u"DelConfig"_s);
    EXPECT_EQ(finding[u"mend"_s][u"path"_s][u"configId"_s].toInt(), 3);
}

TEST_F(Check, BatchTakesTheMendsAndTheirFindingsAreGone)
{
    const QJsonObject before = Run(FileWith(MendableList()), {u"--json"_s}).Json();
    const QSet<QString> expected{u"unknown-operator"_s, u"bounds-reversed"_s, u"full-width-digits"_s,
                                 u"unit-multiple"_s,    u"repeated-item"_s,   u"never-applies"_s,
                                 u"several-defaults"_s};
    QSet<QString> mendable;
    for (const auto& finding : before[u"findings"_s].toArray())
        if (finding.toObject().contains(u"mend"_s)) mendable.insert(finding[u"code"_s].toString());
    EXPECT_EQ(mendable, expected);

    const test::Outcome written = RunAgain({u"--mends"_s, u"mends.jsonl"_s, u"--fail-on"_s, u"never"_s});
    ASSERT_EQ(written.status, 0) << written.err.toStdString();
    EXPECT_TRUE(written.Err().contains(u"脚本已写到"_s));
    const test::Outcome batch =
        m_cli.RunInProject({u"batch"_s, u"mends.jsonl"_s, u"--config"_s, u"rules.xml"_s});
    ASSERT_EQ(batch.status, 0) << batch.err.toStdString();
    // What is mended may show what it hid: the operator that is known now makes a rule apply.
    const QStringList after = Codes(RunAgain({u"--json"_s}).Json());
    for (const QString& code : expected - QSet<QString>{u"never-applies"_s})
        EXPECT_FALSE(after.contains(code)) << code.toStdString();
    const test::Outcome again = RunAgain({u"--mends"_s, u"more.jsonl"_s, u"--fail-on"_s, u"never"_s});
    ASSERT_EQ(again.status, 0) << again.err.toStdString();
    ASSERT_EQ(m_cli.RunInProject({u"batch"_s, u"more.jsonl"_s, u"--config"_s, u"rules.xml"_s}).status, 0);
    EXPECT_FALSE(Codes(RunAgain({u"--json"_s}).Json()).contains(u"never-applies"_s));
}

TEST_F(Check, ScriptDeletesLastAndLeavesOutWhatIsDeleted)
{
    const QByteArray hidden = Condition(1, "材质", "＝", "PPR管") + Condition(2, "公称直径", "＝", "６５");
    QByteArray twice = Rule(4, Condition(1, "材质", "＝", "镀锌钢管"), "003", Quota(1, "10") + Quota(2, "1"));
    const qsizetype from = twice.indexOf("<qd ");
    const qsizetype size = twice.indexOf("</Qd>") - from;
    QByteArray second = twice.mid(from, size);
    second.replace("<qd id=\"1\"", "<qd id=\"2\"")
        .replace("strUnit=\"m\" strUnitCode=\"1\"", "strUnit=\"m\" strUnitCode=\"10\"");
    twice.insert(from + size, second);
    QByteArray spare = Rule(9, {}, "004", Quota(1, "1"));
    spare.replace("bDefault=\"0\"", "bDefault=\"1\"");
    const QByteArray file =
        FileWith(Rule(2, Condition(1, "材质", "＝", "PPR管"), "001") + Rule(3, hidden, "002", Quota(1, "1")) +
                 twice + Rule(5, Condition(1, "材质", "＝", "６５"), "005", Quota(1, "1")) + Default + spare);
    Run(file, {u"--mends"_s, u"mends.jsonl"_s});
    QStringList operations;
    for (const QByteArray& line : m_cli.Folder().ReadFile(u"mends.jsonl"_s).trimmed().split('\n')) {
        const QJsonObject request = QJsonDocument::fromJson(line).object();
        operations.append(request[u"op"_s].toString() + u' ' +
                          QString::number(request[u"path"_s][u"configId"_s].toInt()));
    }
    EXPECT_EQ(operations,
              (QStringList{u"ResetCondition 5"_s, u"ResetDeToQd 5"_s, u"DelQd 4"_s, u"DelDeInQdNode 4"_s,
                           u"DelConfig 3"_s, u"DelConfig 9"_s, u"Save 0"_s}));
    const test::Outcome batch =
        m_cli.RunInProject({u"batch"_s, u"mends.jsonl"_s, u"--config"_s, u"rules.xml"_s});
    EXPECT_EQ(batch.status, 0) << batch.out.toStdString() << batch.err.toStdString();
    EXPECT_EQ(Codes(RunAgain({u"--json"_s}).Json()), QStringList{u"value-not-in-list"_s})
        << "there is no such material as 65";
}

TEST_F(Check, NumbersAreHeldAgainstTheCodingRuleOfTheLibraryInUse)
{
    m_cli.Folder().WriteFile(
        u"库.csv"_s, "用途,代码,名称,编号位数,后缀位数\n清单库,十二三,甲,12,3\n清单库,十二一,乙,12,1\n");
    m_cli.Folder().WriteFile(
        u"清单.csv"_s, "编号,名称,单位,章节,章节名称\n03B001001001,镀锌钢管,m,03B0\\03B001,自有章\\自有节\n");
    ASSERT_EQ(m_cli.RunInProject({u"import"_s, u"libraries"_s, u"库.csv"_s}).status, 0);
    const auto codesWith = [&](const char* suffix, const QByteArray& library) {
        QByteArray rule = Rule(2, Condition(1, "材质", "＝", "镀锌钢管"), suffix, {});
        rule.replace("strQdId=\"031001001", "strQdId=\"03B001001").replace("GB50856-2013", library);
        return Codes(Run(FileWith(rule + Default), {u"--json"_s}).Json());
    };
    for (const QString& library : {u"十二三"_s, u"十二一"_s}) {
        const test::Outcome items =
            m_cli.RunInProject({u"import"_s, u"bill"_s, u"清单.csv"_s, u"--library"_s, library});
        ASSERT_EQ(items.status, 0) << items.err.toStdString();
        ASSERT_EQ(m_cli.RunInProject({u"library"_s, u"use"_s, library}).status, 0);
        EXPECT_EQ(codesWith("002", library.toUtf8()), QStringList()) << library.toStdString();
        EXPECT_EQ(codesWith("001001", library.toUtf8()), QStringList{u"bad-number"_s});
    }
    EXPECT_EQ(codesWith("012", "十二一"), QStringList{u"unknown-item"_s}) << "only the last digit is added";
}

TEST_F(Check, MissingDefaultRuleIsMendedByASave)
{
    Run(FileWith(Rule(2, Condition(1, "材质", "＝", "PPR管"), "001")), {u"--mends"_s, u"mends.jsonl"_s});
    EXPECT_EQ(m_cli.Folder().ReadFile(u"mends.jsonl"_s), "{\"op\":\"Save\"}\n");
    ASSERT_EQ(m_cli.RunInProject({u"batch"_s, u"mends.jsonl"_s, u"--config"_s, u"rules.xml"_s}).status, 0);
    EXPECT_EQ(Codes(RunAgain({u"--json"_s}).Json()), QStringList());
}

TEST_F(Check, MendsAreThoseOfOneSpecialtyAndWarnOfWhatASaveLoses)
{
    QByteArray file = FileWith(Rule(2, Condition(1, "材质", "=", "PPR管"), "001") + Default,
                               "<SMember name=\"旧管\"><Config>" + Default + "</Config></SMember>");
    file.replace(
        "</自动套",
        "<电气 id=\"2\" name=\"电气\"><LMember name=\"配管配线\"><SMember name=\"没有的小类\"/></LMember>"
        "</电气></自动套");
    const test::Outcome outcome = Run(file, {u"--mends"_s, u"mends.jsonl"_s, u"--fail-on"_s, u"never"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.Err().contains(u"其余专业还有 1 行"_s)) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.Err().contains(u"届时会丢失"_s)) << outcome.err.toStdString();
    EXPECT_EQ(m_cli.Folder().ReadFile(u"mends.jsonl"_s).count('\n'), 2);
    const test::Outcome again = RunAgain({u"--mends"_s, u"mends.jsonl"_s, u"--fail-on"_s, u"never"_s});
    EXPECT_EQ(again.status, 1);
    EXPECT_TRUE(again.Err().contains(u"已经存在"_s));
    const test::Outcome other =
        RunAgain({u"--mends"_s, u"other.jsonl"_s, u"--spec"_s, u"电气"_s, u"--fail-on"_s, u"never"_s});
    EXPECT_EQ(m_cli.Folder().ReadFile(u"other.jsonl"_s), "{\"op\":\"Save\"}\n") << other.err.toStdString();
}

TEST_F(Check, SamplesHaveTheNotesThatTheDocumentExplainsAndNothingElse)
{
    struct Expected
    {
        QString file;
        qsizetype partlyHidden;
        qsizetype twoFeatures;
    };
    for (const Expected& sample :
         {Expected{u"PlumbingRules.xml"_s, 24, 2}, Expected{u"ElectricalRules.xml"_s, 34, 0},
          Expected{u"HvacRules.xml"_s, 39, 4}, Expected{u"SampleRules.xml"_s, 0, 0}}) {
        const test::Outcome outcome = m_cli.RunInProject({u"check"_s, u"--json"_s, u"--config"_s,
                                                          test::InSourceTree(u"samples/"_s + sample.file),
                                                          u"--fail-on"_s, u"warning"_s});
        ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString() << outcome.out.toStdString();
        const QStringList codes = Codes(outcome.Json());
        EXPECT_EQ(codes.count(u"partly-hidden"_s), sample.partlyHidden) << sample.file.toStdString();
        EXPECT_EQ(codes.count(u"number-two-features"_s), sample.twoFeatures) << sample.file.toStdString();
        EXPECT_EQ(codes.size(), sample.partlyHidden + sample.twoFeatures) << outcome.out.toStdString();
    }
}

TEST_F(Check, WhereTellsEveryRuleOfEveryConfigurationThatGivesAnItem)
{
    m_cli.Folder().MakeFolder(u"project\\app\\自动套配置"_s);
    m_cli.Folder().WriteFile(Cli::RuleFile(u"甲"_s),
                             FileWith(Rule(2, Condition(1, "材质", "＝", "PPR管"), "001") + Default));
    m_cli.Folder().WriteFile(Cli::RuleFile(u"乙"_s), FileWith(Rule(2, {}, "002") + Default));
    m_cli.Folder().WriteFile(Cli::RuleFile(u"丙"_s), "<a");
    const test::Outcome text = m_cli.RunInProject({u"where"_s, u"031001001"_s});
    EXPECT_EQ(text.status, 1) << "not all was looked at";
    for (const QString& part :
         {u"甲.xml"_s, u"乙.xml"_s, u"031001001001"_s, u"031001001002"_s, u"材质＝PPR管"_s, u"第 1 条"_s})
        EXPECT_TRUE(text.Out().contains(part)) << part.toStdString() << text.out.toStdString();
    EXPECT_TRUE(text.Err().contains(u"丙.xml"_s)) << "told, and the others are found";
    const QJsonArray uses =
        m_cli.RunInProject({u"where"_s, u"示10-1-7"_s, u"--json"_s, u"--config"_s, u"甲"_s})
            .Json()[u"uses"_s]
            .toArray();
    ASSERT_EQ(uses.size(), 1);
    EXPECT_EQ(uses[0][u"kind"_s].toString(), u"quota"_s);
    EXPECT_EQ(uses[0][u"below"_s].toString(), u"031001001001"_s);
    EXPECT_EQ(uses[0][u"rule"_s].toInt(), 1);
    EXPECT_TRUE(m_cli.RunInProject({u"where"_s, u"示9-9"_s}).Out().contains(u"没有规则套用"_s));
    EXPECT_EQ(m_cli.RunInProject({u"where"_s}).status, 2);
    EXPECT_EQ(m_cli.RunInProject({u"where"_s, u"1"_s, u"--config"_s, u"none.xml"_s}).status, 1);
}

TEST_F(Check, WhereSaysOfWhatItCouldNotReadThatItDidNot)
{
    m_cli.Folder().MakeFolder(u"project\\app\\自动套配置"_s);
#if defined(_WIN32)
    m_cli.Folder().WriteFile(Cli::RuleFile(), "<a");
#else
    ASSERT_EQ(mkfifo(QFile::encodeName(m_cli.Folder().Native(Cli::RuleFile())).constData(), 0600), 0);
#endif
    const test::Outcome outcome = m_cli.RunInProject({u"where"_s, u"031001001"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.Out().startsWith(u"读得了的配置中没有规则套用"_s)) << outcome.out.toStdString();
    EXPECT_TRUE(outcome.Err().contains(m_cli.Folder().Native(Cli::RuleFile()))) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.Err().contains(u"有 1 个配置读不了，没有查"_s)) << outcome.err.toStdString();
    ASSERT_TRUE(QFile::remove(m_cli.Folder().Native(Cli::RuleFile())));
    m_cli.Folder().WriteFile(Cli::RuleFile(), FileWith(Rule(2, {}, "001") + Default));
    EXPECT_EQ(m_cli.RunInProject({u"where"_s, u"示9-9"_s}).status, 0);
}

TEST_F(Check, WhereLooksIntoTheFilesThatTheModuleSees)
{
    const QString folder = u"project\\app\\自动套配置"_s;
    m_cli.Folder().MakeFolder(folder);
    const QByteArray rules = FileWith(Rule(2, {}, "001") + Default);
    m_cli.Folder().WriteFile(Cli::RuleFile(u"乙"_s), rules);
    m_cli.Folder().WriteFile(Cli::RuleFile(u"甲"_s), rules);
    // Not a name that a path text can hold.
    QFile odd(m_cli.Folder().Native(folder) + u"/a\\b.xml"_s);
    ASSERT_TRUE(odd.open(QIODevice::WriteOnly));
    odd.write(rules);
    odd.close();
    const test::Outcome outcome = m_cli.RunInProject({u"where"_s, u"031001001"_s, u"--json"_s});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.err.isEmpty()) << outcome.err.toStdString();
    QStringList files;
    for (const QJsonValue& use : outcome.Json()[u"uses"_s].toArray())
        files.append(use[u"file"_s].toString().section(u'/', -1));
    EXPECT_EQ(files, (QStringList{u"乙.xml"_s, u"甲.xml"_s})) << "by name";
}
