#include "cli/CliTesting.h"
#include "support/SourceTree.h"

#include <QtCore/QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::Cli;

namespace {

const QString Pipes = u"给排水\\管道\\给水管"_s;

class RuleTables : public testing::Test
{
protected:
    RuleTables() : m_cli(u"bill"_s)
    {
        QFile file(test::InSourceTree(u"samples/PlumbingRules.xml"_s));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        m_cli.Folder().MakeFolder(u"project\\app\\自动套配置"_s);
        m_cli.Folder().WriteFile(Cli::RuleFile(), file.readAll());
    }

    test::Outcome Export(const QString& file, const QStringList& options = {}) const
    {
        return m_cli.RunInProject(QStringList{u"export"_s, u"rules"_s, file} + options);
    }
    test::Outcome Import(const QString& file, const QStringList& options = {}) const
    {
        return m_cli.RunInProject(QStringList{u"import"_s, u"rules"_s, file} + options);
    }
    QByteArray Rules() const { return m_cli.Folder().ReadFile(Cli::RuleFile()); }

    Cli m_cli;
};

/// What an import or its preview tells of the rules, without the line behind that.
QString ToldChanges(const test::Outcome& outcome)
{
    return outcome.Out().section(u'\n', 0, -3);
}

} // namespace

TEST_F(RuleTables, ExportedRulesComeBackUnchanged)
{
    for (const QString& file : {u"rules.csv"_s, u"rules.xlsx"_s}) {
        const QByteArray before = Rules();
        const test::Outcome written = Export(file);
        ASSERT_EQ(written.status, 0) << written.err.toStdString();
        const test::Outcome outcome = Import(file);
        ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
        EXPECT_TRUE(outcome.Out().startsWith(u"规则没有差别。\n"_s)) << outcome.out.toStdString();
        EXPECT_EQ(Rules(), before);
    }
}

TEST_F(RuleTables, ListMadeInATableComesBackAsTheSameTable)
{
    ASSERT_EQ(Export(u"form.csv"_s, {u"--category"_s, Pipes}).status, 0);
    QByteArray table = m_cli.Folder().ReadFile(u"form.csv"_s);
    const QByteArray head = table.left(table.indexOf('\n') + 1);
    const qsizetype columns = head.count(',') + 1;
    for (int i = 0; i < 100; ++i)
        table = (i == 0 ? head : table) + Pipes.toUtf8() + ",,＝材质" + QByteArray::number(i) +
                QByteArray(columns - 4, ',') + "031001001001：" + QByteArray::number(i) + "×管道长度,\r\n";
    m_cli.Folder().WriteFile(u"made.csv"_s, table);
    const test::Outcome outcome = Import(u"made.csv"_s);
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    ASSERT_EQ(Export(u"again.csv"_s, {u"--category"_s, Pipes}).status, 0);
    EXPECT_EQ(m_cli.Folder().ReadFile(u"again.csv"_s), table);
    EXPECT_TRUE(m_cli.RunInProject({u"history"_s, u"list"_s}).Out().contains(u"DefaultConfig"_s));
}

TEST_F(RuleTables, DryRunTellsAndWritesNothing)
{
    ASSERT_EQ(Export(u"rules.csv"_s).status, 0);
    QByteArray table = m_cli.Folder().ReadFile(u"rules.csv"_s);
    const qsizetype at = table.indexOf(Pipes.toUtf8());
    m_cli.Folder().WriteFile(u"rules.csv"_s,
                             table.left(at) + Pipes.toUtf8() + ",,＝新材质\r\n" + table.mid(at));
    const QByteArray before = Rules();
    const test::Outcome outcome = Import(u"rules.csv"_s, {u"--dry-run"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.Out().contains(u"＝新材质;"_s)) << outcome.out.toStdString();
    EXPECT_TRUE(outcome.Out().contains(u"加了 1 条"_s)) << outcome.out.toStdString();
    EXPECT_EQ(Rules(), before);
    EXPECT_EQ(Import(u"rules.csv"_s).status, 0);
    EXPECT_NE(Rules(), before);
    EXPECT_EQ(m_cli.RunInProject({u"history"_s, u"show"_s, u"last"_s, u"--xml"_s}).out, before);
}

TEST_F(RuleTables, OneWrongLineRefusesAll)
{
    ASSERT_EQ(Export(u"rules.csv"_s).status, 0);
    const QByteArray table = m_cli.Folder().ReadFile(u"rules.csv"_s);
    const QByteArray before = Rules();
    m_cli.Folder().WriteFile(u"rules.csv"_s, table + "没有的小类,,\r\n" + Pipes.toUtf8() + ",是否,\r\n");
    const test::Outcome outcome = Import(u"rules.csv"_s);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.Err().contains(u"没有小类“没有的小类”"_s)) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.Err().contains(u"共 2 处"_s)) << outcome.err.toStdString();
    EXPECT_EQ(Rules(), before);
}

TEST_F(RuleTables, WrongUseIsRefused)
{
    EXPECT_EQ(Export(u"-"_s).status, 2);
    EXPECT_EQ(Export(u"x.csv"_s, {u"--library"_s, u"x"_s}).status, 2);
    EXPECT_EQ(Import(u"x.csv"_s, {u"--replace"_s}).status, 2);
    EXPECT_EQ(Import(u"none.csv"_s).status, 1);
    EXPECT_EQ(Export(u"x.csv"_s, {u"--category"_s, u"没有"_s}).status, 1);
    EXPECT_EQ(m_cli.RunInProject({u"import"_s, u"bill"_s, u"x.csv"_s, u"--config"_s, u"a"_s}).status, 2);
    EXPECT_EQ(m_cli.RunInProject({u"export"_s, u"bill"_s, u"x.csv"_s, u"--category"_s, u"x"_s}).status, 2);
    ASSERT_EQ(Export(u"x.csv"_s).status, 0);
    EXPECT_EQ(Export(u"x.csv"_s).status, 1) << "stands there";
    EXPECT_EQ(Export(u"x.csv"_s, {u"--force"_s}).status, 0);
}

TEST_F(RuleTables, RuleFileThatIsNotThereIsMade)
{
    m_cli.Folder().WriteFile(u"made.csv"_s, "类别,默认规则,材质,清单,定额\n" + Pipes.toUtf8() +
                                                ",,铜管,031001001001,\n" + Pipes.toUtf8() +
                                                ",是,,031001001002,\n");
    const test::Outcome preview = Import(u"made.csv"_s, {u"--config"_s, u"新的"_s, u"--dry-run"_s});
    EXPECT_EQ(preview.status, 0) << preview.err.toStdString();
    EXPECT_FALSE(m_cli.Folder().Exists(Cli::RuleFile(u"新的"_s)));
    const test::Outcome outcome = Import(u"made.csv"_s, {u"--config"_s, u"新的"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(m_cli.Folder().ReadFile(Cli::RuleFile(u"新的"_s)).contains("031001001001"));
    EXPECT_EQ(ToldChanges(preview), ToldChanges(outcome));
    EXPECT_TRUE(Import(u"made.csv"_s, {u"--config"_s, u"新的"_s}).Out().startsWith(u"规则没有差别。\n"_s));
}

TEST(RuleTablesOfANewProject, ImportMakesTheFolderOfRuleFiles)
{
    const Cli cli(u"bill"_s);
    cli.Folder().WriteFile(u"made.csv"_s, "类别,材质,清单,定额\n" + Pipes.toUtf8() + ",铜管,031001001001,\n");
    const QStringList words{u"import"_s, u"rules"_s, u"made.csv"_s};
    ASSERT_FALSE(cli.Folder().Exists(u"project\\app\\自动套配置"_s));
    const test::Outcome preview = cli.RunInProject(words + QStringList{u"--dry-run"_s});
    EXPECT_EQ(preview.status, 0) << preview.err.toStdString();
    EXPECT_FALSE(cli.Folder().Exists(u"project\\app\\自动套配置"_s));
    const test::Outcome outcome = cli.RunInProject(words);
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(cli.Folder().ReadFile(Cli::RuleFile()).contains("031001001001"));
}

TEST_F(RuleTables, ItemWithoutARuleOfItsOwnGetsThatOfTheCategory)
{
    m_cli.Folder().WriteFile(u"made.csv"_s,
                             "类别,材质,清单,定额\n" + Pipes.toUtf8() + ",铜管,030403001001,\n");
    const test::Outcome outcome = Import(u"made.csv"_s);
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    const QByteArray rules = Rules();
    const QByteArray item = rules.mid(rules.indexOf("030403001001"), 300);
    EXPECT_TRUE(item.contains("strFormula=\"水平管长度+立管长度\"")) << item.toStdString();
    ASSERT_EQ(Export(u"again.csv"_s).status, 0);
    EXPECT_TRUE(m_cli.Folder().ReadFile(u"again.csv"_s).contains(",030403001001,")) << "a number alone";
}

TEST_F(RuleTables, AttributesAreThoseThatTheEditorOffers)
{
    const QString duct = u"暖通\\风管\\空调送风管"_s;
    const test::Outcome written = Export(u"form.csv"_s, {u"--category"_s, u"暖通\\风管"_s});
    ASSERT_EQ(written.status, 0) << written.err.toStdString();
    const QByteArray head = m_cli.Folder().ReadFile(u"form.csv"_s).split('\n').first();
    EXPECT_TRUE(head.contains(",周长(mm),")) << head.toStdString();
    EXPECT_TRUE(head.contains(",具体构件,")) << head.toStdString();
    m_cli.Folder().WriteFile(u"made.csv"_s,
                             "类别,周长(mm),具体构件,清单,定额\n" + duct.toUtf8() + ",≤800,a,,\n");
    const test::Outcome outcome = Import(u"made.csv"_s);
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
}

TEST_F(RuleTables, CategoryThatTheProjectHasNotIsTold)
{
    QByteArray rules = Rules();
    rules.replace("name=\"给水管\"", "name=\"旧管\"");
    m_cli.Folder().WriteFile(Cli::RuleFile(), rules);
    const test::Outcome outcome = Export(u"rules.csv"_s);
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.Err().contains(u"工程的类别里没有“给排水\\管道\\旧管”，它的 "_s))
        << outcome.err.toStdString();
    EXPECT_TRUE(Export(u"other.csv"_s, {u"--category"_s, u"排水管"_s}).err.isEmpty()) << "not asked for";
}

TEST_F(RuleTables, RefusedImportMakesNoRuleFile)
{
    m_cli.Folder().WriteFile(u"made.csv"_s, "类别,清单,定额\n没有的小类,,\n");
    EXPECT_EQ(Import(u"made.csv"_s, {u"--config"_s, u"新的"_s}).status, 1);
    EXPECT_EQ(Import(u"none.csv"_s, {u"--config"_s, u"新的"_s}).status, 1);
    EXPECT_FALSE(m_cli.Folder().Exists(Cli::RuleFile(u"新的"_s)));
}
