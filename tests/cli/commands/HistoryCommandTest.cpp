#include "cli/CliTesting.h"

#include "embedded/data/history/History.h"
#include "embedded/data/project/ProjectFolder.h"
#include "platform/Files.h"

#include <QtCore/QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::Cli;

namespace {

const QByteArray AddAndSave = "{\"op\":\"AddConfig\",\"path\":{\"category\":\"给排水\\\\管道\\\\给水管\"}}\n"
                              "{\"op\":\"Save\"}\n";

/// A project whose current configuration is the sample.
class HistoryVerb : public testing::Test
{
protected:
    HistoryVerb() : m_cli(u"bill"_s)
    {
        m_cli.Folder().MakeFolder(u"project\\app\\自动套配置"_s);
        m_cli.Folder().WriteFile(Cli::RuleFile(), Cli::Sample());
    }

    test::Outcome History(const QStringList& words) const
    {
        return m_cli.RunInProject(QStringList{u"history"_s} + words);
    }
    /// The ids that the list shows, the newest first.
    QStringList Ids(const QStringList& options = {}) const
    {
        QStringList ids;
        const QStringList lines = History(QStringList{u"list"_s} + options).Out().split(u'\n');
        for (const QString& line : lines.mid(1))
            if (!line.isEmpty()) ids.append(line.section(u' ', 0, 0));
        return ids;
    }
    QByteArray Shown(const QString& id) const { return History({u"show"_s, id, u"--xml"_s}).out; }
    QByteArray Content() const { return m_cli.Folder().ReadFile(Cli::RuleFile()); }

    Cli m_cli;
};

} // namespace

TEST_F(HistoryVerb, IsEmptyBeforeAnythingWasWritten)
{
    EXPECT_EQ(m_cli.RunInProject({u"show"_s}).status, 0);
    EXPECT_TRUE(History({u"list"_s}).Out().contains(u"还没有历史副本"_s));
}

TEST_F(HistoryVerb, BatchKeepsWhatTheFileHeldAndRestoreGivesItBack)
{
    EXPECT_EQ(m_cli.Batch(AddAndSave).status, 0);
    const QByteArray changed = Content();
    ASSERT_NE(changed, Cli::Sample());
    ASSERT_EQ(Ids().size(), 1);
    EXPECT_EQ(Shown(Ids()[0]), Cli::Sample());
    const test::Outcome outcome = History({u"restore"_s, Ids()[0]});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(Content(), Cli::Sample());
    ASSERT_EQ(Ids().size(), 2);
    EXPECT_EQ(Shown(Ids()[0]), changed) << "the replaced state is kept";
    EXPECT_TRUE(outcome.Out().contains(Ids()[0]));
}

TEST_F(HistoryVerb, OfTheSavesOfOneBatchOnlyTheFirstAndTheLastStateHaveCopies)
{
    EXPECT_EQ(m_cli.Batch(AddAndSave + AddAndSave + AddAndSave).status, 0);
    const QStringList ids = Ids();
    ASSERT_EQ(ids.size(), 2);
    EXPECT_EQ(Shown(ids[1]), Cli::Sample());
    EXPECT_TRUE(Shown(ids[0]).contains("<Config id=\"12\""));
    EXPECT_FALSE(Shown(ids[0]).contains("<Config id=\"13\""));
}

TEST_F(HistoryVerb, StateBeforeABatchStaysWhateverTheLimit)
{
    for (const QString& limit : {u"1"_s, u"2"_s, u"3"_s}) {
        EXPECT_EQ(History({u"limit"_s, limit}).status, 0);
        const QByteArray before = Content();
        EXPECT_EQ(m_cli.Batch(AddAndSave + AddAndSave + AddAndSave + AddAndSave).status, 0);
        QList<QByteArray> copies;
        for (const QString& id : Ids())
            copies.append(Shown(id));
        EXPECT_EQ(copies.size(), limit.toInt());
        EXPECT_TRUE(copies.contains(before)) << limit.toStdString();
    }
}

TEST_F(HistoryVerb, UnreadableFileIsReportedWithTheWayBackToTheNewestReadableCopy)
{
    EXPECT_EQ(m_cli.Batch(AddAndSave).status, 0);
    const QString id = Ids().value(0);
    for (const QByteArray& broken : {QByteArray("<a>"), QByteArray("<b>")}) {
        m_cli.Folder().WriteFile(Cli::RuleFile(), broken);
        const test::Outcome outcome = m_cli.Batch("{\"op\":\"Save\"}\n");
        EXPECT_TRUE(outcome.Err().contains(u"ktqdde history restore "_s + id)) << outcome.err.toStdString();
    }
    EXPECT_EQ(History({u"restore"_s, id}).status, 0);
    EXPECT_EQ(Content(), Cli::Sample());
}

TEST_F(HistoryVerb, FilesThatABatchNamesAreKept)
{
    const QByteArray old = "<自动套清单定额配置信息/>";
    const QByteArray older = "<自动套清单定额配置信息 Version=\"0.0.1\"/>";
    m_cli.Folder().WriteFile(u"甲.xml"_s, old);
    m_cli.Folder().WriteFile(u"乙.xml"_s, older);
    EXPECT_EQ(m_cli
                  .Batch("{\"op\":\"SaveAs\",\"file\":\"./甲.xml\"}\n"
                         "{\"op\":\"NewFile\",\"file\":\"./乙.xml\"}\n")
                  .status,
              0);
    EXPECT_EQ(Shown(Ids({u"--config"_s, u"./甲.xml"_s}).value(0)), old);
    EXPECT_EQ(Shown(Ids({u"--config"_s, u"./乙.xml"_s}).value(0)), older);
}

TEST_F(HistoryVerb, EveryVerbThatMayWriteKeepsTheFileFirst)
{
    m_cli.Folder().WriteFile(Cli::RuleFile(u"甲"_s), "<QdDeConfig/>");
    for (const QStringList& words : QList<QStringList>{{u"new"_s, u"甲"_s, u"--force"_s},
                                                       {u"save-as"_s, u"甲"_s, u"--force"_s},
                                                       {u"write-head"_s, u"甲"_s},
                                                       {u"load"_s, u"乙"_s},
                                                       {u"refresh"_s, u"乙"_s}}) {
        const Cli cli(u"bill"_s);
        cli.Folder().MakeFolder(u"project\\app\\自动套配置"_s);
        for (const QString& name : {u"DefaultConfig"_s, u"甲"_s, u"乙"_s})
            cli.Folder().WriteFile(Cli::RuleFile(name), Cli::Sample());
        const test::Outcome outcome = cli.RunInProject(words);
        EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
        const QString written = words[1] == u"甲"_s ? u"甲"_s : u"DefaultConfig"_s;
        const QString list = cli.RunInProject({u"history"_s, u"list"_s, u"--config"_s, written}).Out();
        EXPECT_TRUE(list.contains(written + u".xml"_s)) << words[0].toStdString();
    }
}

TEST_F(HistoryVerb, UnreadableFileIsReportedWithItsPlaceAndKept)
{
    m_cli.Folder().WriteFile(Cli::RuleFile(), "<a>\n  <b></a>\n");
    const test::Outcome outcome = m_cli.Batch("{\"op\":\"Save\"}\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.out.isEmpty());
    EXPECT_TRUE(outcome.Err().contains(u"第 2 行第 "_s)) << outcome.err.toStdString();
    EXPECT_FALSE(outcome.Err().contains(u"restore"_s)) << "the only copy cannot be read either";
    EXPECT_EQ(Shown(Ids().value(0)), "<a>\n  <b></a>\n");
    EXPECT_EQ(Content(), "<a>\n  <b></a>\n");
}

TEST_F(HistoryVerb, DiffComparesACopyWithTheFileOrWithAnother)
{
    EXPECT_EQ(m_cli.Batch(AddAndSave).status, 0);
    EXPECT_EQ(m_cli.Batch(AddAndSave).status, 0);
    const QStringList ids = Ids();
    ASSERT_EQ(ids.size(), 2);
    const QString rules = History({u"diff"_s, ids[1]}).Out();
    EXPECT_TRUE(rules.contains(u"加了第 "_s)) << rules.toStdString();
    EXPECT_TRUE(rules.contains(u"规则：加了 2 条。"_s)) << rules.toStdString();
    EXPECT_FALSE(rules.contains(u"<Config"_s));
    EXPECT_TRUE(History({u"diff"_s, ids[1], u"--xml"_s}).Out().contains(u"<Config id=\"12\""_s));
    const QString pair = History({u"diff"_s, ids[1], ids[0], u"--xml"_s}).Out();
    EXPECT_TRUE(pair.contains(u"<Config id=\"11\""_s)) << pair.toStdString();
    EXPECT_FALSE(pair.contains(u"<Config id=\"12\""_s));
    EXPECT_TRUE(History({u"diff"_s, ids[0], ids[0]}).Out().contains(u"没有差别"_s));
}

TEST_F(HistoryVerb, LastIsTheNewestCopyOfAllOrOfOneFile)
{
    EXPECT_EQ(History({u"show"_s, u"last"_s}).status, 1) << "there is none yet";
    m_cli.Folder().WriteFile(Cli::RuleFile(u"甲"_s), "<QdDeConfig/>");
    EXPECT_EQ(m_cli.RunInProject({u"save-as"_s, u"甲"_s, u"--force"_s}).status, 0);
    EXPECT_EQ(Shown(u"last"_s), "<QdDeConfig/>");
    EXPECT_EQ(History({u"show"_s, u"last"_s, u"--config"_s, u"DefaultConfig"_s, u"--xml"_s}).out,
              Cli::Sample());
    EXPECT_EQ(History({u"restore"_s, u"last"_s}).status, 0);
    EXPECT_EQ(m_cli.Folder().ReadFile(Cli::RuleFile(u"甲"_s)), "<QdDeConfig/>");
}

TEST_F(HistoryVerb, LimitIsShownSetAndHeld)
{
    EXPECT_TRUE(History({u"limit"_s}).Out().contains(u"50"_s));
    EXPECT_EQ(History({u"limit"_s, u"2"_s}).status, 0);
    for (int batch = 0; batch < 4; ++batch)
        m_cli.Batch(AddAndSave);
    EXPECT_EQ(Ids().size(), 2);
    EXPECT_EQ(History({u"limit"_s, u"-1"_s}).status, 2);
    EXPECT_EQ(History({u"limit"_s, u"100001"_s}).status, 1);
    EXPECT_EQ(History({u"limit"_s, u"viele"_s}).status, 2);
}

TEST_F(HistoryVerb, WrongWordsAndUnknownCopiesAreRefused)
{
    EXPECT_EQ(History({u"frob"_s}).status, 2);
    EXPECT_EQ(History({u"show"_s}).status, 2);
    EXPECT_EQ(History({u"list"_s, u"x"_s}).status, 2);
    for (const QString& action : {u"show"_s, u"diff"_s, u"restore"_s}) {
        const test::Outcome outcome = History({action, u"0000000"_s});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_TRUE(outcome.Err().contains(u"0000000"_s));
    }
}

TEST_F(HistoryVerb, WorksWithoutTheDatabases)
{
    m_cli.Folder().WriteFile(Cli::RuleFile(), Cli::Sample());
    ASSERT_EQ(m_cli.Batch("{\"op\":\"Save\"}\n").status, 0);
    m_cli.Folder().WriteFile(u"project\\project.ktqd"_s, "<rules/>");
    m_cli.Folder().WriteFile(u"project\\app\\catalogue.db"_s, "<rules/>");
    ASSERT_EQ(m_cli.RunInProject({u"show"_s}).status, 1);
    EXPECT_EQ(Shown(Ids({u"--config"_s, u"DefaultConfig"_s}).last()), Cli::Sample());
    EXPECT_EQ(History({u"restore"_s, u"last"_s}).status, 0);
}

TEST_F(HistoryVerb, CurrentConfigurationThatLeavesTheRuleFolderIsRefusedByEveryVerb)
{
    m_cli.Folder().WriteFile(u"project\\SysRegedit.ini"_s,
                             "[QdDeConfigInfo]\r\nConfigName=..\\..\\..\\victim\r\n");
    for (const QStringList& words : QList<QStringList>{{u"show"_s},
                                                       {u"batch"_s, u"-"_s},
                                                       {u"new"_s, u"a"_s},
                                                       {u"save-as"_s, u"a"_s},
                                                       {u"load"_s, u"a"_s},
                                                       {u"refresh"_s, u"a"_s}}) {
        m_cli.Folder().WriteFile(Cli::RuleFile(u"a"_s), Cli::Sample());
        QStringList forced = words;
        if (words[0] == u"new" || words[0] == u"save-as") forced.append(u"--force"_s);
        const test::Outcome outcome = m_cli.RunInProject(forced);
        EXPECT_EQ(outcome.status, 1) << words[0].toStdString();
        EXPECT_TRUE(outcome.Err().contains(u"ConfigName"_s)) << outcome.err.toStdString();
    }
    EXPECT_FALSE(QFile::exists(m_cli.Folder().Native(u"victim.xml"_s)));
}

TEST_F(HistoryVerb, SpecialtyThatStandsTwiceIsRefusedForWorkAndShownWithAWord)
{
    QByteArray twice = Cli::Sample();
    twice.replace("</自动套清单定额配置信息>", "<给排水 id=\"1\" name=\"给排水\"/></自动套清单定额配置信息>");
    m_cli.Folder().WriteFile(Cli::RuleFile(), twice);
    const test::Outcome refused = m_cli.Batch("{\"op\":\"Save\"}\n");
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.Err().contains(u"专业“给排水”在文件中不止一段"_s)) << refused.err.toStdString();
    EXPECT_EQ(m_cli.Folder().ReadFile(Cli::RuleFile()), twice);
    const test::Outcome shown = m_cli.RunInProject({u"show"_s});
    EXPECT_EQ(shown.status, 0);
    EXPECT_TRUE(shown.Err().contains(u"不止一段"_s));
}

TEST_F(HistoryVerb, KeepFirstLeavesThePartThatIsReadAndACopyOfTheRest)
{
    EXPECT_EQ(m_cli.RunInProject({u"keep-first"_s}).status, 0);
    EXPECT_EQ(Content(), Cli::Sample()) << "nothing stands twice";
    EXPECT_TRUE(Ids().isEmpty());
    QByteArray twice = Cli::Sample();
    twice.replace("</自动套清单定额配置信息>", "<给排水 id=\"1\" name=\"给排水\"/></自动套清单定额配置信息>");
    m_cli.Folder().WriteFile(Cli::RuleFile(), twice);
    EXPECT_TRUE(m_cli.Batch(AddAndSave).Err().contains(u"ktqdde keep-first"_s));
    const qsizetype copies = Ids().size();
    const test::Outcome outcome = m_cli.RunInProject({u"keep-first"_s, u"DefaultConfig"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(Content().count("name=\"给排水\""), 1);
    EXPECT_TRUE(Content().contains("031001001002")) << "the first part";
    EXPECT_LE(copies, Ids().size());
    EXPECT_EQ(Shown(Ids().value(0)), twice);
    EXPECT_EQ(m_cli.Batch(AddAndSave).status, 0);
    m_cli.Folder().WriteFile(Cli::RuleFile(), "<a");
    EXPECT_EQ(m_cli.RunInProject({u"keep-first"_s}).status, 1);
    EXPECT_EQ(Content(), "<a");
    EXPECT_EQ(m_cli.RunInProject({u"keep-first"_s, u"none"_s}).status, 1);
}

TEST_F(HistoryVerb, ACopyFromBeforeARenamingIsWrittenToTheFileAsItIsCalledNow)
{
    EXPECT_EQ(m_cli.Batch(AddAndSave).status, 0);
    const CString renamed = CString(Cli::RuleFile()).replace(u"DefaultConfig"_s, u"改名"_s);
    const CString from = m_cli.Folder().Path(Cli::RuleFile());
    const CString to = m_cli.Folder().Path(renamed);
    ASSERT_TRUE(platform::Files().Rename(from, to));
    embedded::History(embedded::ProjectFolder(m_cli.Folder().Native(u"project"_s))).Follow(from, to);
    const QStringList ids = Ids({u"--config"_s, u"改名"_s});
    ASSERT_EQ(ids.size(), 1);
    EXPECT_EQ(History({u"restore"_s, ids[0], u"--config"_s, u"改名"_s}).status, 0);
    EXPECT_EQ(m_cli.Folder().ReadFile(renamed), Cli::Sample());
    EXPECT_FALSE(m_cli.Folder().Exists(Cli::RuleFile()));
}
