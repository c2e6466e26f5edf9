#include "cli/CliTesting.h"

#include <QtCore/QJsonArray>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::Cli;

namespace {

/// A project whose current configuration is the sample.
class Show : public testing::Test
{
protected:
    Show() : m_cli(u"bill"_s)
    {
        m_cli.Folder().MakeFolder(u"project\\app\\自动套配置"_s);
        m_cli.Folder().WriteFile(Cli::RuleFile(), Cli::Sample());
    }

    Cli m_cli;
};

} // namespace

TEST_F(Show, TableHasRulesConditionsAndItems)
{
    const test::Outcome outcome = m_cli.RunInProject({u"show"_s});
    EXPECT_EQ(outcome.status, 0);
    for (const QString& text : {u"给排水\\管道\\给水管"_s, u"材质＝镀锌钢管"_s, u"15＜公称直径≤20"_s,
                                u"031001001002"_s, u"示10-1-2"_s, u"其它"_s})
        EXPECT_TRUE(outcome.Out().contains(text)) << text.toStdString();
}

TEST_F(Show, CategoriesThatHoldNothingAreCountedUnlessOneIsNamed)
{
    const QString all = m_cli.RunInProject({u"show"_s}).Out();
    EXPECT_FALSE(all.contains(u"给排水\\管道\\热水管"_s));
    EXPECT_TRUE(all.contains(u"另有 30 个小类只有空的默认规则"_s));
    const QString named = m_cli.RunInProject({u"show"_s, u"--category"_s, u"热水管"_s}).Out();
    EXPECT_TRUE(named.contains(u"给排水\\管道\\热水管（1 条规则）"_s));
}

TEST_F(Show, CategoryMayBeAFullTextItsBeginningOrASmallName)
{
    const auto count = [&](const QString& text) {
        const test::Outcome outcome = m_cli.RunInProject({u"show"_s, u"--json"_s, u"--category"_s, text});
        return outcome.Json().value(u"categories"_s).toArray().size();
    };
    EXPECT_EQ(count(u"给排水\\管道\\给水管"_s), 1);
    EXPECT_EQ(count(u"给水管"_s), 1);
    EXPECT_EQ(count(u"给排水\\管道"_s), 6);
    EXPECT_EQ(count(u"给排水"_s), 34);
}

TEST_F(Show, UnknownCategoryIsRefused)
{
    const test::Outcome outcome = m_cli.RunInProject({u"show"_s, u"--category"_s, u"电气\\电缆桥架\\桥架"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.Err().contains(u"电气\\电缆桥架\\桥架"_s));
    EXPECT_TRUE(outcome.out.isEmpty());
}

TEST_F(Show, SpecShowsAnotherSpecialtyWithoutMakingItCurrent)
{
    const QJsonObject other = m_cli.RunInProject({u"show"_s, u"--spec"_s, u"电气"_s, u"--json"_s}).Json();
    EXPECT_EQ(other.value(u"spec"_s).toString(), u"电气"_s);
    EXPECT_EQ(m_cli.RunInProject({u"show"_s, u"--json"_s}).Json().value(u"spec"_s).toString(), u"给排水"_s);
    EXPECT_EQ(m_cli.RunInProject({u"show"_s, u"--spec"_s, u"园林"_s}).status, 1);
}

TEST_F(Show, JsonHoldsEveryField)
{
    const QJsonObject shown =
        m_cli.RunInProject({u"show"_s, u"--json"_s, u"--category"_s, u"给排水\\管道\\给水管"_s}).Json();
    EXPECT_EQ(shown.value(u"file"_s).toString(), m_cli.Folder().Native(Cli::RuleFile()));
    const QJsonObject category = shown.value(u"categories"_s).toArray()[0].toObject();
    EXPECT_EQ(category.value(u"category"_s).toString(), u"给排水\\管道\\给水管"_s);
    EXPECT_EQ(category.value(u"specId"_s).toInt(), 1);
    EXPECT_EQ(category.value(u"lMemberId"_s).toInt(), 101);
    EXPECT_EQ(category.value(u"sMemberId"_s).toInt(), 10101);
    const QJsonObject rule = category.value(u"rules"_s).toArray()[1].toObject();
    EXPECT_EQ(rule.keys(), (QStringList{u"LastConditionId"_s, u"LastDeId"_s, u"LastQdId"_s, u"bDefault"_s,
                                        u"conditions"_s, u"de"_s, u"id"_s, u"qd"_s, u"text"_s}));
    EXPECT_EQ(rule.value(u"text"_s).toString(), u"材质＝镀锌钢管;连接方式＝螺纹连接;15＜公称直径≤20;"_s);
    const QJsonObject condition = rule.value(u"conditions"_s).toArray()[2].toObject();
    EXPECT_EQ(condition.keys(),
              (QStringList{u"bEqual"_s, u"id"_s, u"strCFType"_s, u"strEqualoperator"_s, u"strRange1"_s,
                           u"strRange2"_s, u"strRangeoperator1"_s, u"strRangeoperator2"_s, u"strValue"_s}));
    EXPECT_EQ(condition.value(u"bEqual"_s), QJsonValue(false));
    const QJsonObject bill = rule.value(u"qd"_s).toArray()[0].toObject();
    EXPECT_EQ(bill.value(u"LastDeId"_s).toInt(), 1);
    EXPECT_EQ(bill.value(u"strQdCode"_s).toString(), u"GB50856-2013"_s);
    EXPECT_EQ(bill.value(u"de"_s).toArray()[0].toObject().value(u"strDeId"_s).toString(), u"示10-1-2"_s);
}

TEST_F(Show, ConfigMayBeANameOrANativePath)
{
    m_cli.Folder().WriteFile(Cli::RuleFile(u"别的.配置"_s), Cli::Sample());
    m_cli.Folder().WriteFile(u"plain"_s, Cli::Sample());
    EXPECT_EQ(m_cli.RunInProject({u"show"_s, u"--config"_s, u"别的.配置"_s}).status, 0);
    EXPECT_EQ(m_cli.RunInProject({u"show"_s, u"--config"_s, m_cli.Folder().Native(Cli::RuleFile())}).status,
              0);
    EXPECT_EQ(m_cli.RunInProject({u"show"_s, u"--config"_s, u"plain"_s}).status, 0);
}

TEST_F(Show, FileThatDoesNotExistIsNamedAndNotCreated)
{
    const test::Outcome outcome = m_cli.RunInProject({u"show"_s, u"--config"_s, u"./none.xml"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.Err().contains(u"none.xml"_s));
    EXPECT_FALSE(m_cli.Folder().Exists(u"none.xml"_s));
}

TEST_F(Show, BrokenFileIsReportedWithLineAndColumnAndStaysAsItIs)
{
    const QByteArray broken = Cli::Sample().replace("</LMember>", "</Lmember>");
    m_cli.Folder().WriteFile(Cli::RuleFile(), broken);
    const test::Outcome outcome = m_cli.RunInProject({u"show"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.out.isEmpty());
    const qsizetype line = broken.left(broken.indexOf("</Lmember>")).count('\n') + 1;
    EXPECT_TRUE(outcome.Err().contains(u"第 %1 行第 "_s.arg(line))) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.Err().contains(m_cli.Folder().Native(Cli::RuleFile())));
    EXPECT_EQ(m_cli.Folder().ReadFile(Cli::RuleFile()), broken);
}

TEST_F(Show, FilesThatAreNoRuleFilesAreRefused)
{
    const QList<QByteArray> contents{
        "",
        QByteArray("\0\1\2\3binary", 10),
        "<other/>",
        "<!DOCTYPE a><自动套清单定额配置信息/>",
        Cli::Sample().left(5000),
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?><自动套清单定额配置信息 a=\"\xC4\xE3\"/>",
    };
    for (const QByteArray& content : contents) {
        m_cli.Folder().WriteFile(u"bad.xml"_s, content);
        const test::Outcome outcome = m_cli.RunInProject({u"show"_s, u"--config"_s, u"bad.xml"_s});
        EXPECT_EQ(outcome.status, 1) << content.left(60).toStdString();
        EXPECT_TRUE(outcome.Err().contains(u"bad.xml"_s));
        EXPECT_EQ(m_cli.Folder().ReadFile(u"bad.xml"_s), content);
    }
}

TEST_F(Show, SpecialtyIdThatDiffersFromTheProgramsIsReported)
{
    m_cli.Folder().WriteFile(Cli::RuleFile(), Cli::Sample().replace("<给排水 id=\"1\"", "<给排水 id=\"8\""));
    const test::Outcome outcome = m_cli.RunInProject({u"show"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.Err().contains(u"id"_s));
}
