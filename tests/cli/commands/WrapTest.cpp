#include "cli/CliTesting.h"
#include "cli/TakeoffTesting.h"
#include "store/WrappedFile.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::Cli;

namespace {

class Wrap : public testing::Test
{
protected:
    Wrap() : m_cli(u"bill"_s) { m_cli.Folder().WriteFile(u"rules.xml"_s, Cli::Sample()); }

    test::Outcome WriteHead(const QString& file) { return m_cli.RunInProject({u"write-head"_s, file}); }
    test::Outcome Unwrap(const QString& file, const QStringList& options = {})
    {
        return m_cli.Run(QStringList{u"unwrap"_s, file, u"-o"_s, u"out.xml"_s} + options);
    }

    Cli m_cli;
};

} // namespace

TEST_F(Wrap, WriteHeadWrapsTheFileAndSaysSo)
{
    const test::Outcome outcome = WriteHead(u"rules.xml"_s);
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.Out().contains(u"清单模式"_s));
    const auto wrapped = store::ParseWrapped(m_cli.Folder().ReadFile(u"rules.xml"_s));
    ASSERT_TRUE(wrapped.has_value());
    EXPECT_TRUE(wrapped->content.contains("CalMode=\"清单版\""));
}

TEST_F(Wrap, UnwrapGivesTheContentBackAndShowsTheFields)
{
    WriteHead(u"rules.xml"_s);
    const test::Outcome outcome = Unwrap(u"rules.xml"_s);
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.Out().contains(u"通用安装工程工程量计算规范2013.mdb"_s));
    EXPECT_EQ(m_cli.Folder().ReadFile(u"out.xml"_s),
              store::ParseWrapped(m_cli.Folder().ReadFile(u"rules.xml"_s))->content);
    EXPECT_EQ(m_cli.RunInProject({u"show"_s, u"--config"_s, u"out.xml"_s}).status, 0);
}

TEST_F(Wrap, CommandsOnRulesTellHowToGetAtThoseOfAWrappedFile)
{
    WriteHead(u"rules.xml"_s);
    m_cli.Folder().WriteFile(u"t.csv"_s, test::Head.toUtf8());
    const QStringList file{u"--config"_s, u"rules.xml"_s};
    for (const QStringList& verb :
         {QStringList{u"check"_s}, QStringList{u"show"_s}, QStringList{u"apply"_s, u"t.csv"_s},
          QStringList{u"export"_s, u"rules"_s, u"r.csv"_s}, QStringList{u"batch"_s, u"-"_s},
          QStringList{u"try"_s, u"--category"_s, u"给水管"_s}}) {
        const test::Outcome outcome = m_cli.RunInProject(verb + file);
        EXPECT_EQ(outcome.status, 1) << verb[0].toStdString();
        EXPECT_TRUE(outcome.Err().contains(u"ktqdde unwrap"_s)) << outcome.err.toStdString();
        EXPECT_FALSE(outcome.Err().contains(u"根元素"_s)) << outcome.err.toStdString();
    }
}

TEST_F(Wrap, UnwrapOverwritesOnlyWhenForced)
{
    WriteHead(u"rules.xml"_s);
    const QByteArray mine = "<自动套清单定额配置信息/>";
    m_cli.Folder().WriteFile(u"out.xml"_s, mine);
    const test::Outcome refused = Unwrap(u"rules.xml"_s);
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.Err().contains(u"--force"_s));
    EXPECT_EQ(m_cli.Folder().ReadFile(u"out.xml"_s), mine);
    EXPECT_EQ(Unwrap(u"rules.xml"_s, {u"--force"_s}).status, 0);
    EXPECT_NE(m_cli.Folder().ReadFile(u"out.xml"_s), mine);
}

TEST_F(Wrap, UnwrapReplacesNothingButRuleFiles)
{
    WriteHead(u"rules.xml"_s);
    m_cli.Folder().WriteFile(u"note.txt"_s, "mine");
    for (const QString& target :
         {u"project\\app\\catalogue.db"_s, u"project\\project.ktqd"_s, u"note.txt"_s}) {
        const QByteArray before = m_cli.Folder().ReadFile(target);
        const test::Outcome outcome =
            m_cli.Run({u"unwrap"_s, u"rules.xml"_s, u"-o"_s, m_cli.Folder().Native(target), u"--force"_s});
        EXPECT_EQ(outcome.status, 1) << target.toStdString();
        const QString reason =
            target == u"note.txt"_s ? u"不是规则文件，不能替换"_s : u"工程自己的文件，不能覆盖"_s;
        EXPECT_TRUE(outcome.Err().contains(reason)) << outcome.err.toStdString();
        EXPECT_EQ(m_cli.Folder().ReadFile(target), before) << target.toStdString();
    }
    m_cli.Folder().WriteFile(u"out.xml"_s, m_cli.Folder().ReadFile(u"rules.xml"_s));
    EXPECT_EQ(Unwrap(u"rules.xml"_s, {u"--force"_s}).status, 0) << "a wrapped file is one";
}

TEST_F(Wrap, UnwrapRefusesForeignMissingAndTruncatedFiles)
{
    EXPECT_EQ(Unwrap(u"rules.xml"_s).status, 1);
    EXPECT_EQ(Unwrap(u"none"_s).status, 1);
    WriteHead(u"rules.xml"_s);
    const QByteArray whole = m_cli.Folder().ReadFile(u"rules.xml"_s);
    for (const qsizetype length :
         {qsizetype{0}, qsizetype{3}, qsizetype{8}, qsizetype{40}, whole.size() - 1}) {
        m_cli.Folder().WriteFile(u"cut"_s, whole.left(length));
        const test::Outcome outcome = Unwrap(u"cut"_s);
        EXPECT_EQ(outcome.status, 1) << length;
        EXPECT_TRUE(outcome.Err().contains(u"cut"_s));
    }
    m_cli.Folder().WriteFile(u"long"_s, whole + "x");
    EXPECT_EQ(Unwrap(u"long"_s).status, 1);
    EXPECT_FALSE(m_cli.Folder().Exists(u"out.xml"_s));
}

TEST_F(Wrap, WriteHeadRefusesWhatIsNoRuleFileAndLeavesItAlone)
{
    for (const QByteArray& content : {QByteArray("<other/>"), QByteArray("no xml"), QByteArray()}) {
        m_cli.Folder().WriteFile(u"bad.xml"_s, content);
        const test::Outcome outcome = WriteHead(u"bad.xml"_s);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_TRUE(outcome.Err().contains(u"bad.xml"_s));
        EXPECT_EQ(m_cli.Folder().ReadFile(u"bad.xml"_s), content);
    }
    EXPECT_EQ(WriteHead(u"./none.xml"_s).status, 1);
    EXPECT_FALSE(m_cli.Folder().Exists(u"none.xml"_s));
}

TEST_F(Wrap, SecondWriteHeadIsRefused)
{
    WriteHead(u"rules.xml"_s);
    const QByteArray wrapped = m_cli.Folder().ReadFile(u"rules.xml"_s);
    EXPECT_EQ(WriteHead(u"rules.xml"_s).status, 1);
    EXPECT_EQ(m_cli.Folder().ReadFile(u"rules.xml"_s), wrapped);
}

TEST_F(Wrap, WriteHeadOfAReadOnlyFileIsRefusedAndLeavesIt)
{
    if (test::TempFolder::IgnoresPermissions()) GTEST_SKIP() << "this user may write everything";
    m_cli.Folder().SetReadOnly(u"rules.xml"_s, true);
    const test::Outcome outcome = WriteHead(u"rules.xml"_s);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.Err().contains(u"rules.xml"_s));
    EXPECT_EQ(m_cli.Folder().ReadFile(u"rules.xml"_s), Cli::Sample());
}

TEST_F(Wrap, RuleFileThatUnwrapReplacesHasACopy)
{
    WriteHead(u"rules.xml"_s);
    m_cli.Folder().MakeFolder(u"project\\app\\自动套配置"_s);
    m_cli.Folder().WriteFile(Cli::RuleFile(), Cli::Sample());
    const QString target = m_cli.Folder().Native(Cli::RuleFile());
    const QStringList words{u"unwrap"_s, u"rules.xml"_s, u"-o"_s, target, u"--force"_s};
    ASSERT_EQ(m_cli.Run(words).status, 0) << "no project is named: the one around the file is meant";
    EXPECT_EQ(
        m_cli
            .RunInProject({u"history"_s, u"show"_s, u"last"_s, u"--xml"_s, u"--config"_s, u"DefaultConfig"_s})
            .out,
        Cli::Sample());
}

TEST_F(Wrap, RuleFileThatExportReplacesHasACopy)
{
    ASSERT_EQ(m_cli.RunInProject({u"export"_s, u"attributes"_s, u"rules.xml"_s, u"--force"_s}).status, 0);
    EXPECT_EQ(
        m_cli.RunInProject({u"history"_s, u"show"_s, u"last"_s, u"--xml"_s, u"--config"_s, u"./rules.xml"_s})
            .out,
        Cli::Sample());
}
