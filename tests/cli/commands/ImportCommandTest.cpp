#include "cli/CliTesting.h"
#include "support/Patience.h"

#include <QtCore/QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::Cli;

namespace {

QStringList Kinds()
{
    return {u"catalog"_s, u"attributes"_s, u"bill"_s, u"quota"_s, u"guide"_s, u"calc"_s, u"libraries"_s};
}

class ImportVerb : public testing::Test
{
protected:
    ImportVerb() : m_cli(u"bill"_s) {}

    test::Outcome Import(const QString& kind, const QByteArray& bytes, const QStringList& options = {}) const
    {
        m_cli.Folder().WriteFile(u"自有.csv"_s, bytes);
        return m_cli.RunInProject(QStringList{u"import"_s, kind, u"自有.csv"_s} + options);
    }
    QByteArray Exported(const QString& kind) const
    {
        EXPECT_EQ(m_cli.RunInProject({u"export"_s, kind, u"out.csv"_s, u"--force"_s}).status, 0);
        return m_cli.Folder().ReadFile(u"out.csv"_s);
    }

    Cli m_cli;
};

const QByteArray OwnBill = "number,name,unit,section,section_title\n"
                           "099901001,自有项目,10m,0999\\099901,自有章\\自有节\n";

QByteArray ManyItems()
{
    QByteArray table = "number,name,unit,section,section_title\n";
    for (int row = 0; row < 20000; ++row)
        table += QByteArray::number(900000000 + row) + ",项目,m,09,自有\n";
    return table;
}

} // namespace

TEST_F(ImportVerb, ExportedTablesComeBackUnchanged)
{
    for (const QString& kind : Kinds()) {
        const QByteArray table = Exported(kind);
        EXPECT_GT(table.count('\n'), 5) << kind.toStdString();
        for (const QStringList& options : {QStringList(), QStringList{u"--replace"_s}}) {
            const test::Outcome outcome = Import(kind, table, options);
            EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
            EXPECT_TRUE(outcome.Out().contains(u"新增 0，修改 0，去掉 0"_s)) << outcome.out.toStdString();
            EXPECT_EQ(Exported(kind), table);
        }
    }
}

TEST_F(ImportVerb, WorkbooksComeBackUnchangedToo)
{
    for (const QString& kind : Kinds()) {
        const QByteArray table = Exported(kind);
        ASSERT_EQ(m_cli.RunInProject({u"export"_s, kind, u"表.XLSX"_s, u"--force"_s}).status, 0);
        EXPECT_TRUE(m_cli.Folder().ReadFile(u"表.XLSX"_s).startsWith("PK"));
        const test::Outcome outcome = m_cli.RunInProject({u"import"_s, kind, u"表.XLSX"_s, u"--replace"_s});
        EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
        EXPECT_TRUE(outcome.Out().contains(u"新增 0，修改 0，去掉 0"_s)) << outcome.out.toStdString();
        EXPECT_EQ(Exported(kind), table);
    }
}

TEST_F(ImportVerb, TakesTheNamedSheetOfAWorkbook)
{
    ASSERT_EQ(m_cli.RunInProject({u"export"_s, u"bill"_s, u"表.xlsx"_s}).status, 0);
    const auto import = [&](const QString& file, const QString& sheet) {
        return m_cli.RunInProject({u"import"_s, u"bill"_s, file, u"--sheet"_s, sheet});
    };
    EXPECT_EQ(import(u"表.xlsx"_s, u"清单"_s).status, 0);
    const test::Outcome missing = import(u"表.xlsx"_s, u"别的"_s);
    EXPECT_EQ(missing.status, 1);
    EXPECT_TRUE(missing.Err().contains(u"没有名为“别的”的工作表，只有：清单；原数据没有变"_s))
        << missing.err.toStdString();
    m_cli.Folder().WriteFile(u"自有.csv"_s, OwnBill);
    EXPECT_EQ(import(u"自有.csv"_s, u"清单"_s).status, 1);
}

TEST_F(ImportVerb, TextsThatLookLikeFormulasAreExportedAsTexts)
{
    ASSERT_EQ(Import(u"bill"_s, "number,name,unit,section,section_title\n"
                                "099901001,=1+1,m,0999\\099901,自有章\\自有节\n")
                  .status,
              0);
    const QByteArray table = Exported(u"bill"_s);
    EXPECT_TRUE(table.contains("099901001,'=1+1,m,"));
    EXPECT_TRUE(Import(u"bill"_s, table, {u"--replace"_s}).Out().contains(u"新增 0，修改 0，去掉 0"_s));
    EXPECT_EQ(Exported(u"bill"_s), table);
}

TEST_F(ImportVerb, SaysWhatItDid)
{
    const test::Outcome outcome = Import(u"bill"_s, OwnBill);
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.err.isEmpty()) << "progress is for terminals only";
    EXPECT_TRUE(outcome.Out().contains(u"已导入 1 行：新增 1，修改 0，去掉 0"_s))
        << outcome.out.toStdString();
    EXPECT_TRUE(
        Exported(u"bill"_s).contains("099901001,自有项目,10m,10,否,,0999\\099901,自有章\\自有节\r\n"));
}

TEST_F(ImportVerb, NamesTheRowsThatBecomeOthersOrGoAndADryRunLeavesThemAlone)
{
    const QByteArray before = Exported(u"bill"_s);
    const QByteArray rows = "number,name,unit,section\n"
                            "031001001,自有,km,0310\\031001\n";
    const test::Outcome trial = Import(u"bill"_s, rows, {u"--dry-run"_s});
    EXPECT_EQ(trial.status, 0) << trial.err.toStdString();
    EXPECT_TRUE(trial.Out().startsWith(u"只是试导入，什么也没有改。会导入 1 行：新增 0，修改 1，去掉 0\n"_s))
        << trial.out.toStdString();
    const QString change = u"\n修改 031001001 镀锌钢管：名称“镀锌钢管”改为“自有”，单位“m”改为“km”\n"_s;
    EXPECT_TRUE(trial.Out().contains(change)) << trial.out.toStdString();
    const test::Outcome replacing = Import(u"bill"_s, rows, {u"--dry-run"_s, u"--replace"_s});
    EXPECT_TRUE(replacing.Out().contains(u"\n去掉 031001002 钢管\n"_s)) << replacing.out.toStdString();
    EXPECT_EQ(replacing.Out().count(u"\n去掉 "_s), before.count('\n') - 2) << "all but the heading and one";
    EXPECT_EQ(Exported(u"bill"_s), before);
    EXPECT_TRUE(Import(u"bill"_s, rows).Out().contains(change));
    EXPECT_NE(Exported(u"bill"_s), before);
}

TEST_F(ImportVerb, NamesTheLibraryOfATableAndTakesAnother)
{
    EXPECT_TRUE(Import(u"bill"_s, OwnBill).Out().contains(u"\n库：GB50856-2013 通用"_s));
    const QByteArray used = Exported(u"bill"_s);
    const QStringList other{u"--library"_s, u"GB50500-2008"_s};
    const test::Outcome outcome = Import(u"bill"_s, OwnBill, other);
    EXPECT_TRUE(outcome.Out().contains(u"\n库：GB50500-2008 建设"_s)) << outcome.out.toStdString();
    EXPECT_EQ(Exported(u"bill"_s), used);
    const test::Outcome exported =
        m_cli.RunInProject(QStringList{u"export"_s, u"bill"_s, u"other.csv"_s} + other);
    EXPECT_TRUE(exported.Out().contains(u"GB50500-2008"_s)) << exported.out.toStdString();
    EXPECT_EQ(m_cli.Folder().ReadFile(u"other.csv"_s).count("自有项目"), 1);
    EXPECT_EQ(Import(u"calc"_s, "item\n").Out().count(u"库："_s), 0);
    EXPECT_EQ(Import(u"bill"_s, OwnBill, {u"--library"_s, u"DEMO-DE-2024"_s}).status, 1);
}

TEST_F(ImportVerb, RefusedRowsAreNamedOnStandardErrorAndNothingIsTaken)
{
    const QByteArray before = Exported(u"bill"_s);
    const test::Outcome outcome = Import(u"bill"_s, OwnBill + "1,短,m,0999\\099901,\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.out.isEmpty());
    EXPECT_TRUE(outcome.Err().contains(u"第 3 行："_s)) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.Err().contains(u"原数据没有变"_s)) << outcome.err.toStdString();
    EXPECT_EQ(Exported(u"bill"_s), before);
}

TEST_F(ImportVerb, FullDiskLeavesTheOldDataWhole)
{
    if (!QFile::exists(u"/bin/sh"_s)) GTEST_SKIP() << "a limit of file sizes is set by a shell";
    const QByteArray before = Exported(u"bill"_s);
    m_cli.Folder().WriteFile(u"big.csv"_s, ManyItems());
    QProcess shell;
    shell.setWorkingDirectory(m_cli.Folder().Native({}));
    shell.start(u"/bin/sh"_s, {u"-c"_s,
                               u"ulimit -f 700; exec \"$0\" --project project import bill "
                               "big.csv --replace"_s,
                               QStringLiteral(KTQDDE_PROGRAM)});
    test::WaitForEnd(shell);
    const QString error = QString::fromUtf8(shell.readAllStandardError());
    EXPECT_EQ(shell.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(shell.exitCode(), 1) << error.toStdString();
    EXPECT_TRUE(error.contains(u"原数据没有变"_s)) << error.toStdString();
    EXPECT_EQ(Exported(u"bill"_s), before);
}

TEST_F(ImportVerb, KillAtAnyMomentLeavesTheOldDataOrTheNew)
{
    const QByteArray before = Exported(u"bill"_s);
    m_cli.Folder().WriteFile(u"old.csv"_s, before);
    m_cli.Folder().WriteFile(u"new.csv"_s, ManyItems());
    ASSERT_EQ(m_cli.RunInProject({u"import"_s, u"bill"_s, u"new.csv"_s, u"--replace"_s}).status, 0);
    const QByteArray after = Exported(u"bill"_s);
    for (int milliseconds = 0; milliseconds < 400; milliseconds += 25) {
        ASSERT_EQ(m_cli.RunInProject({u"import"_s, u"bill"_s, u"old.csv"_s, u"--replace"_s}).status, 0);
        QProcess process;
        process.setWorkingDirectory(m_cli.Folder().Native({}));
        process.start(QStringLiteral(KTQDDE_PROGRAM),
                      {u"--project"_s, u"project"_s, u"import"_s, u"bill"_s, u"new.csv"_s, u"--replace"_s});
        process.waitForFinished(milliseconds);
        test::Kill(process);
        const QByteArray left = Exported(u"bill"_s);
        EXPECT_TRUE(left == before || left == after) << milliseconds;
    }
}

TEST_F(ImportVerb, WrongCommandLinesAreRefused)
{
    EXPECT_EQ(m_cli.RunInProject({u"import"_s, u"frob"_s, u"x.csv"_s}).status, 2);
    EXPECT_EQ(m_cli.RunInProject({u"import"_s, u"bill"_s}).status, 2);
    EXPECT_EQ(m_cli.Run({u"import"_s, u"bill"_s, u"x.csv"_s}).status, 2);
    EXPECT_EQ(m_cli.RunInProject({u"import"_s, u"bill"_s, u"none.csv"_s}).status, 1);
    EXPECT_EQ(m_cli.Run({u"--project"_s, u"nowhere"_s, u"export"_s, u"bill"_s, u"x.csv"_s}).status, 1);
}

TEST_F(ImportVerb, ExportOverwritesOnlyWhenForced)
{
    m_cli.Folder().WriteFile(u"out.csv"_s, "mine");
    EXPECT_EQ(m_cli.RunInProject({u"export"_s, u"bill"_s, u"out.csv"_s}).status, 1);
    EXPECT_EQ(m_cli.Folder().ReadFile(u"out.csv"_s), "mine");
    EXPECT_NE(Exported(u"bill"_s), "mine");
}

TEST_F(ImportVerb, FullDiskLeavesTheOldFileOfAnExport)
{
    if (!QFile::exists(u"/bin/sh"_s)) GTEST_SKIP() << "a limit of file sizes is set by a shell";
    m_cli.Folder().WriteFile(u"out.csv"_s, "mine");
    QProcess shell;
    shell.setWorkingDirectory(m_cli.Folder().Native({}));
    shell.start(u"/bin/sh"_s,
                {u"-c"_s, u"ulimit -f 1; exec \"$0\" --project project export bill out.csv --force"_s,
                 QStringLiteral(KTQDDE_PROGRAM)});
    test::WaitForEnd(shell);
    EXPECT_EQ(shell.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(shell.exitCode(), 1);
    EXPECT_TRUE(QString::fromUtf8(shell.readAllStandardError()).contains(u"out.csv"_s));
    EXPECT_EQ(m_cli.Folder().ReadFile(u"out.csv"_s), "mine");
}

TEST_F(ImportVerb, ExportToADashWritesToStandardOutput)
{
    const test::Outcome outcome = m_cli.RunInProject({u"export"_s, u"bill"_s, u"-"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ("\xEF\xBB\xBF" + outcome.out, Exported(u"bill"_s));
    EXPECT_FALSE(QFile::exists(m_cli.Folder().Native(u"-"_s)));
}

TEST_F(ImportVerb, ReaderOfThePipeThatGoesAwayEndsTheExportSilently)
{
    if (!QFile::exists(u"/bin/sh"_s)) GTEST_SKIP() << "the pipe is made by a shell";
    QProcess shell;
    shell.setWorkingDirectory(m_cli.Folder().Native({}));
    // The reader goes at once and tells so by a file, for which the writer waits.
    shell.start(u"/bin/sh"_s,
                {u"-c"_s,
                 u"{ until [ -e gone ]; do sleep 0.05; done; \"$0\" --project project export bill -; "
                 "echo $? >status; } | { exec <&-; : >gone; }"_s,
                 QStringLiteral(KTQDDE_PROGRAM)});
    test::WaitForEnd(shell);
    EXPECT_EQ(m_cli.Folder().ReadFile(u"status"_s), "1\n");
    EXPECT_EQ(shell.readAllStandardError(), "");
}
