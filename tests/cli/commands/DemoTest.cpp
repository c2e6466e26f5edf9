#include "cli/CliTesting.h"
#include "support/StrictXml.h"

#include <QtCore/QDir>
#include <QtCore/QJsonArray>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::Cli;

TEST(Demo, ShowsTheRulesTheNewRuleTheFileAndWhatChangedInIt)
{
    const Cli cli;
    const test::Outcome outcome = cli.Run({u"demo"_s, u"demo"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.err.isEmpty());
    const QString file = cli.Folder().Native(u"demo\\app\\自动套配置\\DefaultConfig.xml"_s);
    for (const QString& text :
         {u"材质＝薄壁不锈钢管"_s, u"敷设方式≠埋地"_s, u"15＜公称直径≤20"_s, u"公称压力≥1.0"_s,
          u"031001003001"_s, u"示10-1-31"_s, file, u"  +     <Config id=\"11\""_s,
          u"  - <SMember id=\"10101\" name=\"给水管\" LastConfigId=\"10\">"_s})
        EXPECT_TRUE(outcome.Out().contains(text)) << text.toStdString();
}

TEST(Demo, LeavesAProjectWithTheSavedRule)
{
    const Cli cli;
    cli.Run({u"demo"_s, u"demo"_s});
    EXPECT_TRUE(test::IsStrictXml(cli.Folder().ReadFile(u"demo\\app\\自动套配置\\DefaultConfig.xml"_s)));
    const test::Outcome shown =
        cli.Run({u"--project"_s, u"demo"_s, u"show"_s, u"--json"_s, u"--category"_s, u"给水管"_s});
    const QJsonArray rules =
        shown.Json().value(u"categories"_s).toArray()[0].toObject().value(u"rules"_s).toArray();
    ASSERT_EQ(rules.size(), 11);
    EXPECT_EQ(rules[9].toObject().value(u"text"_s).toString(),
              u"材质＝薄壁不锈钢管;敷设方式≠埋地;15＜公称直径≤20;公称压力≥1.0;"_s);
    EXPECT_TRUE(rules[10].toObject().value(u"bDefault"_s).toBool());
}

TEST(Demo, EndsWithTheBillOfTheSampleAndItsFile)
{
    const Cli cli;
    const test::Outcome outcome = cli.Run({u"demo"_s, u"demo"_s});
    for (const QString& text : {u"项目特征描述"_s, u"030109001002"_s, u"1.额定功率：＞5.5，≤15"_s,
                                u"构件 303 个 ＝ 已套价 270 ＋ 默认规则 31 ＋ 未套价 2"_s,
                                cli.Folder().Native(u"demo\\工程量清单.xlsx"_s)})
        EXPECT_TRUE(outcome.Out().contains(text)) << text.toStdString();
    EXPECT_TRUE(cli.Folder().ReadFile(u"demo\\工程量清单.xlsx"_s).startsWith("PK"));
}

TEST(Demo, WhatItProposesNextWorks)
{
    const Cli cli;
    const CString told = cli.Run({u"demo"_s, u"demo"_s}).Out().section(u"接着可以试"_s, 1);
    QString tried;
    for (const QString& line : told.split(u'\n')) {
        const QString command = line.trimmed();
        if (!command.startsWith(u"ktqdde "_s)) continue;
        const test::Outcome outcome = cli.Run(command.split(u' ').sliced(1));
        EXPECT_EQ(outcome.status, 0) << command.toStdString() << outcome.err.toStdString();
        if (command.contains(u" try "_s)) tried = outcome.Out();
    }
    EXPECT_TRUE(tried.contains(u"镀锌钢管 给水 DN65"_s)) << tried.toStdString();
    EXPECT_TRUE(tried.contains(u"1.25"_s)) << tried.toStdString();
}

TEST(Demo, RefusesAFolderThatHoldsAProject)
{
    const Cli cli(u"bill"_s);
    const test::Outcome outcome = cli.Run({u"demo"_s, u"project"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.Err().contains(u"project"_s));
    EXPECT_FALSE(cli.Folder().Exists(Cli::RuleFile()));
}

TEST(Demo, WithoutAFolderItMakesAFreshOneBelowTheTemporaryFolder)
{
    Cli cli;
    cli.Folder().MakeFolder(u"tmp"_s);
    cli.SetVariable(u"TMPDIR"_s, cli.Folder().Native(u"tmp"_s));
    cli.SetVariable(u"TEMP"_s, cli.Folder().Native(u"tmp"_s));
    EXPECT_EQ(cli.Run({u"demo"_s}).status, 0);
    EXPECT_EQ(cli.Run({u"demo"_s}).status, 0) << "each run has a folder of its own";
    EXPECT_EQ(QDir(cli.Folder().Native(u"tmp"_s)).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 2);
}
