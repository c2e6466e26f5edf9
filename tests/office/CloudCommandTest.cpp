#include "cli/CliTesting.h"
#include "office/OfficeSetting.h"
#include "office/TwoProjects.h"

#include <QtCore/QJsonArray>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::Base;
using test::Outcome;
using test::PipeElement;
using test::PipeFile;
using test::WithCopper;

namespace {

constexpr int InConflict = 3;
constexpr int Waiting = 4;

/// Two projects of one office, worked on by the command line.
class CloudVerb : public testing::Test
{
protected:
    CloudVerb()
    {
        Run({u"init"_s, u"wang"_s, u"--office"_s, u"wang"_s});
        Run({u"init"_s, u"li"_s, u"--office"_s, u"li"_s});
        Write(u"wang"_s, Base);
        m_first = Cloud(u"wang"_s, {u"publish"_s, test::Configuration, u"--note"_s, u"第一版"_s});
        Cloud(u"li"_s, {u"fetch"_s, test::Configuration});
    }

    Outcome Run(const QStringList& arguments) const { return m_cli.Run(arguments); }
    Outcome Cloud(const QString& project, const QStringList& arguments) const
    {
        return Run(QStringList{u"--project"_s, project, u"cloud"_s} + arguments);
    }
    static CString File(const QString& project)
    {
        return project + u"\\app\\自动套配置\\"_s + test::Configuration + u".xml"_s;
    }
    void Write(const QString& project, const QByteArray& bytes) const
    {
        m_cli.Folder().MakeFolder(project + u"\\app\\自动套配置"_s);
        m_cli.Folder().WriteFile(File(project), bytes);
    }
    QByteArray Read(const QString& project) const { return m_cli.Folder().ReadFile(File(project)); }
    /// Both have edited the same rule, and Wang has published.
    void Quarrel() const
    {
        Write(u"wang"_s, PipeFile(PipeElement(2, "钢管", "个数")));
        Cloud(u"wang"_s, {u"publish"_s, test::Configuration});
        Write(u"li"_s, PipeFile(PipeElement(2, "钢管", "长度")));
    }

    test::OfficeSetting m_setting;
    test::Cli m_cli;
    Outcome m_first;
};

} // namespace

TEST_F(CloudVerb, PublishesAndFetches)
{
    EXPECT_EQ(m_first.status, 0) << m_first.err.toStdString();
    EXPECT_TRUE(m_first.Out().contains(u"已发布为第 1 版"_s)) << m_first.out.toStdString();
    EXPECT_EQ(Read(u"li"_s), Base);
    Write(u"li"_s, WithCopper);
    EXPECT_EQ(Cloud(u"li"_s, {u"publish"_s, test::Configuration}).status, 0);
    const Outcome fetched = Cloud(u"wang"_s, {u"fetch"_s, test::Configuration});
    EXPECT_EQ(fetched.status, 0) << fetched.err.toStdString();
    EXPECT_EQ(Read(u"wang"_s), WithCopper);
    EXPECT_EQ(fetched.err, QByteArray());
}

TEST_F(CloudVerb, ListsAndLogsAsTableAndAsJson)
{
    Write(u"li"_s, WithCopper);
    const Outcome table = Cloud(u"li"_s, {u"list"_s});
    EXPECT_EQ(table.status, 0) << table.err.toStdString();
    EXPECT_TRUE(table.Out().contains(u"已修改"_s)) << table.out.toStdString();
    const QJsonObject list = Cloud(u"li"_s, {u"list"_s, u"--json"_s}).Json();
    EXPECT_EQ(list[u"office"_s].toString(), u"li"_s);
    EXPECT_TRUE(list[u"reached"_s].toBool());
    const QJsonObject entry = list[u"configurations"_s].toArray().first().toObject();
    EXPECT_EQ(entry[u"configuration"_s].toString(), test::Configuration);
    EXPECT_EQ(entry[u"state"_s].toString(), u"edited"_s);
    EXPECT_EQ(entry[u"base"_s].toInt(), 1);
    EXPECT_EQ(entry[u"last"_s][u"note"_s].toString(), u"第一版"_s);
    EXPECT_EQ(entry[u"last"_s][u"author"_s].toString(), m_setting.User(u"wang"_s));
    EXPECT_TRUE(Cloud(u"li"_s, {u"log"_s, test::Configuration}).Out().contains(u"第一版"_s));
    const QJsonObject log = Cloud(u"li"_s, {u"log"_s, test::Configuration, u"--json"_s}).Json();
    EXPECT_EQ(log[u"versions"_s].toArray().size(), 1);
    EXPECT_EQ(log[u"versions"_s][0][u"version"_s].toInt(), 1);
}

TEST_F(CloudVerb, ComparesVersionsAndTheFileByRule)
{
    Write(u"li"_s, WithCopper);
    const Outcome edited = Cloud(u"li"_s, {u"diff"_s, test::Configuration});
    EXPECT_EQ(edited.status, 0) << edited.err.toStdString();
    EXPECT_TRUE(edited.Out().contains(u"加了 1 条"_s)) << edited.out.toStdString();
    Cloud(u"li"_s, {u"publish"_s, test::Configuration});
    EXPECT_TRUE(Cloud(u"wang"_s, {u"diff"_s, test::Configuration, u"2"_s}).Out().contains(u"删了 1 条"_s));
    const Outcome json = Cloud(u"wang"_s, {u"diff"_s, test::Configuration, u"1"_s, u"2"_s, u"--json"_s});
    EXPECT_EQ(json.Json()[u"added"_s].toInt(), 1) << json.out.toStdString();
}

TEST_F(CloudVerb, ConflictHasAStatusOfItsOwnAndIsToldWithBothSides)
{
    Quarrel();
    const QByteArray mine = Read(u"li"_s);
    const Outcome outcome = Cloud(u"li"_s, {u"publish"_s, test::Configuration});
    EXPECT_EQ(outcome.status, InConflict);
    for (const QString& text : {u"冲突 1/1"_s, u"个数"_s, u"长度"_s, u"没有发布"_s, u"第 2 版"_s})
        EXPECT_TRUE(outcome.Err().contains(text)) << outcome.err.toStdString();
    EXPECT_EQ(outcome.out, QByteArray());
    EXPECT_EQ(Read(u"li"_s), mine);
    EXPECT_EQ(Cloud(u"li"_s, {u"fetch"_s, test::Configuration}).status, InConflict);
    EXPECT_EQ(Read(u"li"_s), mine);
    EXPECT_EQ(Cloud(u"li"_s, {u"publish"_s, test::Configuration, u"--prefer"_s, u"mine"_s}).status, 0);
    EXPECT_TRUE(Read(u"li"_s).contains("长度"));
}

TEST_F(CloudVerb, RestoresAnEarlierVersion)
{
    Write(u"li"_s, WithCopper);
    Cloud(u"li"_s, {u"publish"_s, test::Configuration});
    const Outcome outcome = Cloud(u"li"_s, {u"restore"_s, test::Configuration, u"--version"_s, u"1"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.Out().contains(u"第 3 版"_s)) << outcome.out.toStdString();
    EXPECT_EQ(Read(u"li"_s), Base);
}

TEST_F(CloudVerb, RemovesAndBringsBack)
{
    EXPECT_EQ(Cloud(u"li"_s, {u"remove"_s, test::Configuration}).status, 1);
    EXPECT_EQ(Cloud(u"wang"_s, {u"remove"_s, test::Configuration}).status, 0);
    EXPECT_EQ(Cloud(u"li"_s, {u"publish"_s, test::Configuration}).status, 1);
    EXPECT_EQ(Cloud(u"wang"_s, {u"remove"_s, test::Configuration, u"--back"_s}).status, 0);
    EXPECT_EQ(Cloud(u"li"_s, {u"publish"_s, test::Configuration}).status, 0);
}

TEST_F(CloudVerb, WithoutTheServerEveryVerbSaysSoAndPublishingWaits)
{
    Write(u"li"_s, WithCopper);
    test::SharedServer().Stop();
    const Outcome shown = Run({u"--project"_s, u"li"_s, u"show"_s, u"--config"_s, test::Configuration});
    const Outcome published = Cloud(u"li"_s, {u"publish"_s, test::Configuration});
    const Outcome listed = Cloud(u"li"_s, {u"list"_s, u"--json"_s});
    const Outcome fetched = Cloud(u"li"_s, {u"fetch"_s, test::Configuration});
    const Outcome libraries = Run({u"--project"_s, u"li"_s, u"library"_s});
    const Outcome exported = Run({u"--project"_s, u"li"_s, u"export"_s, u"catalog"_s, u"-"_s});
    test::SharedServer().StartAgain();
    for (const Outcome& outcome : {libraries, exported}) {
        EXPECT_EQ(outcome.status, 0);
        EXPECT_TRUE(outcome.Err().contains(u"用的是"_s)) << outcome.err.toStdString();
    }
    EXPECT_EQ(shown.status, 0);
    EXPECT_TRUE(shown.Out().contains(u"铜管"_s));
    EXPECT_TRUE(shown.Err().contains(u"用的是"_s)) << shown.err.toStdString();
    EXPECT_EQ(published.status, Waiting);
    EXPECT_TRUE(published.Err().contains(u"还没有发布"_s)) << published.err.toStdString();
    EXPECT_EQ(published.out, QByteArray());
    EXPECT_FALSE(listed.Json()[u"reached"_s].toBool());
    EXPECT_TRUE(listed.Json()[u"configurations"_s][0][u"waiting"_s].toBool()) << listed.out.toStdString();
    EXPECT_EQ(fetched.status, 1);
    const Outcome sent = Cloud(u"li"_s, {u"list"_s});
    EXPECT_EQ(sent.status, 0);
    EXPECT_TRUE(sent.Err().contains(u"已发布为第 2 版"_s)) << sent.err.toStdString();
    EXPECT_TRUE(sent.Out().contains(u"相同"_s)) << sent.out.toStdString();
}

TEST_F(CloudVerb, WhatCannotBeSentIsToldAndKeepsWaiting)
{
    test::SharedServer().Stop();
    Write(u"li"_s, PipeFile(PipeElement(2, "钢管", "长度")));
    EXPECT_EQ(Cloud(u"li"_s, {u"publish"_s, test::Configuration}).status, Waiting);
    test::SharedServer().StartAgain();
    Write(u"wang"_s, PipeFile(PipeElement(2, "钢管", "个数")));
    Cloud(u"wang"_s, {u"publish"_s, test::Configuration});
    const Outcome listed = Cloud(u"li"_s, {u"list"_s});
    EXPECT_TRUE(listed.Err().contains(u"还在等"_s)) << listed.err.toStdString();
    EXPECT_TRUE(listed.Out().contains(u"等待发布"_s)) << listed.out.toStdString();
    EXPECT_EQ(Cloud(u"li"_s, {u"publish"_s, test::Configuration, u"--prefer"_s, u"theirs"_s}).status, 0);
    EXPECT_FALSE(Cloud(u"li"_s, {u"list"_s}).Out().contains(u"等待发布"_s));
}

TEST_F(CloudVerb, WhatWaitsIsWithdrawnWithoutBeingSent)
{
    EXPECT_EQ(Cloud(u"li"_s, {u"withdraw"_s, test::Configuration}).status, 1);
    Write(u"li"_s, WithCopper);
    test::SharedServer().Stop();
    Cloud(u"li"_s, {u"publish"_s, test::Configuration});
    test::SharedServer().StartAgain();
    const Outcome withdrawn = Cloud(u"li"_s, {u"withdraw"_s, test::Configuration});
    EXPECT_EQ(withdrawn.status, 0) << withdrawn.err.toStdString();
    EXPECT_TRUE(withdrawn.Out().contains(u"已撤回"_s)) << withdrawn.out.toStdString();
    const Outcome listed = Cloud(u"li"_s, {u"list"_s});
    EXPECT_FALSE(listed.Out().contains(u"等待发布"_s));
    EXPECT_EQ(listed.err, QByteArray());
    EXPECT_EQ(Read(u"li"_s), WithCopper);
    EXPECT_FALSE(Cloud(u"li"_s, {u"log"_s, test::Configuration}).Out().contains(u" 2 "_s));
}

TEST_F(CloudVerb, WhatWasMergedIsPrintedRuleByRule)
{
    Write(u"wang"_s, WithCopper);
    Cloud(u"wang"_s, {u"publish"_s, test::Configuration});
    Write(u"li"_s, PipeFile(PipeElement(2, "钢管") + PipeElement(3, "PE管")));
    const Outcome merged = Cloud(u"li"_s, {u"publish"_s, test::Configuration});
    EXPECT_EQ(merged.status, 0) << merged.err.toStdString();
    EXPECT_TRUE(merged.Out().contains(u"从办公室的第 2 版并入的"_s)) << merged.out.toStdString();
    EXPECT_TRUE(merged.Out().contains(u"铜管"_s)) << merged.out.toStdString();
    EXPECT_FALSE(merged.Out().contains(u"PE管"_s)) << merged.out.toStdString();
    EXPECT_TRUE(merged.Out().contains(u"发布为第 3 版"_s)) << merged.out.toStdString();
}

TEST_F(CloudVerb, WhatWasMergedIsPrintedThoughThePublicationIsNotAnswered)
{
    Write(u"wang"_s, WithCopper);
    Cloud(u"wang"_s, {u"publish"_s, test::Configuration});
    Write(u"li"_s, PipeFile(PipeElement(2, "钢管") + PipeElement(3, "PE管")));
    const test::AnswerLost lost(m_setting.Database());
    const Outcome merged = Cloud(u"li"_s, {u"publish"_s, test::Configuration});
    EXPECT_EQ(merged.status, Waiting);
    EXPECT_TRUE(merged.Out().contains(u"从办公室的第 2 版并入的"_s)) << merged.out.toStdString();
    EXPECT_TRUE(merged.Out().contains(u"铜管"_s)) << merged.out.toStdString();
    EXPECT_TRUE(merged.Err().contains(u"本地文件已与别人发布的第 2 版合并"_s)) << merged.err.toStdString();
    Write(u"wang"_s, PipeFile(PipeElement(2, "钢管") + PipeElement(3, "铜管") + PipeElement(4, "铸铁管")));
    const Outcome listed = Cloud(u"li"_s, {u"list"_s});
    EXPECT_TRUE(listed.Err().contains(u"可能已经发布"_s)) << listed.err.toStdString();
}

TEST_F(CloudVerb, ProjectWithoutAnOfficeIsToldOfTheFolderAndOfOffices)
{
    Run({u"init"_s, u"alone"_s});
    const Outcome outcome = Cloud(u"alone"_s, {u"list"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.Err().contains(u"云盘"_s) && outcome.Err().contains(u"--office"_s))
        << outcome.err.toStdString();
}

TEST_F(CloudVerb, WrongUsageIsRefused)
{
    for (const QStringList& words :
         {QStringList{u"send"_s}, QStringList{u"log"_s}, QStringList{u"list"_s, u"a"_s},
          QStringList{u"withdraw"_s}, QStringList{u"withdraw"_s, u"a"_s, u"--prefer"_s, u"mine"_s},
          QStringList{u"list"_s, u"--note"_s, u"a"_s}, QStringList{u"restore"_s, u"a"_s},
          QStringList{u"fetch"_s, u"a"_s, u"--version"_s, u"0"_s},
          QStringList{u"publish"_s, u"a"_s, u"--prefer"_s, u"both"_s},
          QStringList{u"diff"_s, u"a"_s, u"eins"_s}})
        EXPECT_EQ(Cloud(u"li"_s, words).status, 2) << words.join(u' ').toStdString();
}

TEST_F(CloudVerb, OfficeVerbTellsItsStatus)
{
    const QJsonObject status = Run({u"office"_s, u"status"_s, u"li"_s, u"--json"_s}).Json();
    EXPECT_EQ(status[u"office"_s].toString(), u"li"_s);
    EXPECT_EQ(status[u"right"_s].toString(), u"editor"_s);
    EXPECT_EQ(status[u"configurations"_s].toInt(), 1);
    EXPECT_EQ(status[u"schema"_s].toInt(), status[u"knownSchema"_s].toInt());
    EXPECT_TRUE(Run({u"office"_s, u"status"_s, u"gast"_s}).Out().contains(u"读者"_s));
    EXPECT_EQ(Run({u"office"_s, u"create"_s, u"wang"_s}).status, 1);
    EXPECT_EQ(Run({u"office"_s, u"upgrade"_s, u"wang"_s}).status, 0);
    EXPECT_EQ(Run({u"office"_s, u"status"_s, u"no such"_s}).status, 2);
    EXPECT_EQ(Run({u"office"_s, u"status"_s, u"nosuch"_s}).status, 1);
    EXPECT_EQ(Run({u"office"_s, u"create"_s, u"wang"_s, u"--json"_s}).status, 2);
}
