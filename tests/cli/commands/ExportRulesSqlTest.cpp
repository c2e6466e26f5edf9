#include "cli/CliTesting.h"
#include "support/Patience.h"
#include "support/SourceTree.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::Cli;

namespace {

class RulesSqlVerb : public testing::Test
{
protected:
    RulesSqlVerb() : m_cli(u"bill"_s)
    {
        m_cli.Folder().MakeFolder(Cli::RuleFile().section(u'\\', 0, -2));
        m_cli.Folder().WriteFile(Cli::RuleFile(), Cli::Sample());
    }

    test::Outcome Export(const QStringList& options) const
    {
        return m_cli.RunInProject(QStringList{u"export"_s, u"rules-sql"_s} + options);
    }

    Cli m_cli;
};

} // namespace

TEST_F(RulesSqlVerb, WritesOneSelectForEachDialect)
{
    for (const QString& dialect : {u"postgresql"_s, u"sqlite"_s, u"duckdb"_s}) {
        const test::Outcome outcome = Export({u"--dialect"_s, dialect});
        EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
        EXPECT_TRUE(outcome.err.isEmpty()) << outcome.err.toStdString();
        EXPECT_TRUE(outcome.Out().startsWith(u"-- "_s)) << outcome.out.left(100).toStdString();
        EXPECT_TRUE(outcome.Out().contains(u"CREATE TABLE components (\"构件编号\" text, \"类别\" text"_s));
        EXPECT_TRUE(outcome.Out().contains(u"\nWITH cell AS ("_s));
        EXPECT_TRUE(outcome.Out().endsWith(u";\n"_s));
        EXPECT_TRUE(outcome.Out().contains(u"给水管"_s));
    }
}

TEST_F(RulesSqlVerb, WritesTheSameToAFileAndSaysWhere)
{
    const QByteArray query = Export({u"--dialect"_s, u"sqlite"_s}).out;
    const test::Outcome outcome = Export({u"--dialect"_s, u"sqlite"_s, u"-o"_s, u"规则.sql"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.Out().contains(u"规则.sql"_s));
    EXPECT_EQ(m_cli.Folder().ReadFile(u"规则.sql"_s), query);
}

TEST_F(RulesSqlVerb, ReplacesAFileOnlyWhenTold)
{
    m_cli.Folder().WriteFile(u"rules.sql"_s, "mine");
    const QStringList words{u"--dialect"_s, u"sqlite"_s, u"-o"_s, u"rules.sql"_s};
    const test::Outcome outcome = Export(words);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.Err().contains(u"--force"_s)) << outcome.err.toStdString();
    EXPECT_EQ(m_cli.Folder().ReadFile(u"rules.sql"_s), "mine");
    EXPECT_EQ(Export(words + QStringList{u"--force"_s}).status, 0);
    EXPECT_TRUE(m_cli.Folder().ReadFile(u"rules.sql"_s).startsWith("-- "));
}

TEST_F(RulesSqlVerb, TakesTheRulesOfANamedFileAndOfOneCategory)
{
    m_cli.Folder().WriteFile(u"rules.xml"_s, Cli::Sample());
    const QStringList words{u"--dialect"_s, u"postgresql"_s, u"--config"_s, u"rules.xml"_s};
    const test::Outcome all = Export(words);
    EXPECT_EQ(all.status, 0) << all.err.toStdString();
    const test::Outcome one = Export(words + QStringList{u"--category"_s, u"给水管"_s});
    EXPECT_EQ(one.status, 0) << one.err.toStdString();
    EXPECT_LT(one.out.size(), all.out.size());
    EXPECT_TRUE(one.Out().contains(u"WHERE"_s));
    EXPECT_FALSE(one.Out().contains(u"消火栓"_s));
    const test::Outcome none = Export(words + QStringList{u"--category"_s, u"没有的小类"_s});
    EXPECT_EQ(none.status, 1);
    EXPECT_TRUE(none.out.isEmpty());
    EXPECT_TRUE(none.Err().contains(u"没有小类“没有的小类”"_s)) << none.err.toStdString();
}

TEST_F(RulesSqlVerb, RefusesAnUnknownDialectAndWordsThatMakeNoSense)
{
    const QList<QStringList> wrong{{},
                                   {u"--dialect"_s, u"mysql"_s},
                                   {u"--dialect"_s, u"sqlite"_s, u"rules.sql"_s},
                                   {u"--dialect"_s, u"sqlite"_s, u"--library"_s, u"GB50500-2013"_s}};
    for (const QStringList& words : wrong) {
        const test::Outcome outcome = Export(words);
        EXPECT_EQ(outcome.status, 2) << words.join(u' ').toStdString();
        EXPECT_TRUE(outcome.out.isEmpty());
        EXPECT_FALSE(outcome.err.isEmpty());
    }
    EXPECT_TRUE(Export(wrong[1]).Err().contains(u"没有方言“mysql”，只有 postgresql、sqlite、duckdb"_s));
    for (const QStringList& words :
         {QStringList{u"export"_s, u"bill"_s, u"a.csv"_s, u"--dialect"_s, u"sqlite"_s},
          QStringList{u"export"_s, u"bill"_s}})
        EXPECT_EQ(m_cli.RunInProject(words).status, 2) << words.join(u' ').toStdString();
    EXPECT_FALSE(QFile::exists(m_cli.Folder().Native(u"a.csv"_s)));
}

TEST_F(RulesSqlVerb, RefusesRulesThatCannotBeRead)
{
    m_cli.Folder().WriteFile(u"broken.xml"_s, "<");
    const test::Outcome outcome =
        Export({u"--dialect"_s, u"sqlite"_s, u"--config"_s, u"broken.xml"_s, u"-o"_s, u"rules.sql"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.Err().contains(u"broken.xml"_s)) << outcome.err.toStdString();
    EXPECT_FALSE(QFile::exists(m_cli.Folder().Native(u"rules.sql"_s)));
}

TEST_F(RulesSqlVerb, AFileThatCannotBeWrittenIsAnErrorWithItsName)
{
    const test::Outcome outcome = Export({u"--dialect"_s, u"sqlite"_s, u"-o"_s, u"nowhere/rules.sql"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.Err().contains(u"rules.sql"_s)) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.out.isEmpty());
}

TEST_F(RulesSqlVerb, FullDiskInTheMiddleOfWritingLeavesNothing)
{
    if (!QFile::exists(u"/bin/sh"_s)) GTEST_SKIP() << "a limit of file sizes is set by a shell";
    for (const bool isThere : {false, true}) {
        if (isThere) m_cli.Folder().WriteFile(u"rules.sql"_s, "mine");
        const QStringList before = QDir(m_cli.Folder().Native({})).entryList();
        QProcess shell;
        shell.setWorkingDirectory(m_cli.Folder().Native({}));
        shell.start(u"/bin/sh"_s,
                    {u"-c"_s,
                     u"ulimit -f 1; exec \"$0\" --project project export rules-sql --dialect sqlite "
                     "-o rules.sql --force"_s,
                     QStringLiteral(KTQDDE_PROGRAM)});
        test::WaitForEnd(shell);
        EXPECT_EQ(shell.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(shell.exitCode(), 1);
        EXPECT_TRUE(QString::fromUtf8(shell.readAllStandardError()).contains(u"rules.sql"_s));
        EXPECT_EQ(QDir(m_cli.Folder().Native({})).entryList(), before);
        if (isThere) {
            EXPECT_EQ(m_cli.Folder().ReadFile(u"rules.sql"_s), "mine");
        }
    }
}
