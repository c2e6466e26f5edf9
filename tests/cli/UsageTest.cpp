#include "cli/CliTesting.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::Cli;

namespace {

QStringList Verbs()
{
    return {u"demo"_s,       u"init"_s,   u"show"_s,      u"try"_s,     u"apply"_s,   u"catalog"_s,
            u"batch"_s,      u"new"_s,    u"load"_s,      u"save-as"_s, u"refresh"_s, u"attr-config"_s,
            u"write-head"_s, u"unwrap"_s, u"history"_s,   u"library"_s, u"import"_s,  u"export"_s,
            u"check"_s,      u"where"_s,  u"keep-first"_s};
}

void ExpectUsageError(const test::Outcome& outcome, const QString& usage)
{
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(outcome.out.isEmpty());
    EXPECT_TRUE(outcome.Err().contains(usage)) << outcome.err.toStdString();
}

} // namespace

TEST(Usage, GeneralHelpListsEveryVerb)
{
    const test::Outcome outcome = Cli().Run({u"--help"_s});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.err.isEmpty());
    for (const QString& verb : Verbs())
        EXPECT_TRUE(outcome.Out().contains(u"\n  %1 "_s.arg(verb))) << verb.toStdString();
}

TEST(Usage, EveryVerbExplainsItselfWithoutAProject)
{
    const Cli cli;
    for (const QString& verb : Verbs()) {
        const test::Outcome outcome = cli.Run({verb, u"--help"_s});
        EXPECT_EQ(outcome.status, 0) << verb.toStdString();
        EXPECT_TRUE(outcome.Out().contains(u"用法：ktqdde "_s)) << verb.toStdString();
        EXPECT_TRUE(outcome.Out().contains(verb)) << verb.toStdString();
        EXPECT_TRUE(outcome.Out().contains(u"--project DIR"_s)) << verb.toStdString();
    }
}

TEST(Usage, BatchHelpNamesEveryOperation)
{
    const QString help = Cli().Run({u"batch"_s, u"-h"_s}).Out();
    for (const char* operation : {"AddConfig",
                                  "AddConfigByCopy",
                                  "DelConfig",
                                  "MoveUpConfig",
                                  "MoveDownConfig",
                                  "AddCondition",
                                  "ResetCondition",
                                  "DelCondition",
                                  "AddQd",
                                  "ResetQd",
                                  "DelQd",
                                  "AddDe2QdNode",
                                  "AddDe2ConfigNode",
                                  "ResetDeToQd",
                                  "ResetDeToConfig",
                                  "DelDeInQdNode",
                                  "DelDeInConfigNode",
                                  "GetConfig",
                                  "GetExistQdIndex",
                                  "Save",
                                  "SaveAs",
                                  "ReLoad",
                                  "NewFile"})
        EXPECT_TRUE(help.contains(QString::fromUtf8(operation))) << operation;
}

TEST(Usage, VersionIsNameAndNumber)
{
    const test::Outcome outcome = Cli().Run({u"--version"_s});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.Out().startsWith(u"ktqdde "_s));
    EXPECT_TRUE(outcome.Out().contains(u'.'));
}

TEST(Usage, NoVerbIsWrong)
{
    ExpectUsageError(Cli().Run({}), u"用法：ktqdde [--project DIR] 命令"_s);
}

TEST(Usage, UnknownVerbIsNamed)
{
    ExpectUsageError(Cli().Run({u"frob"_s}), u"frob"_s);
}

TEST(Usage, UnknownOptionOfTheProgramIsNamed)
{
    ExpectUsageError(Cli().Run({u"--frob"_s}), u"--frob"_s);
}

TEST(Usage, WrongCommandLinesOfVerbsGetTheirUsageLine)
{
    const Cli cli(u"bill"_s);
    const QList<QStringList> wrong{
        {u"show"_s, u"--frob"_s},
        {u"show"_s, u"file"_s, u"surplus"_s},
        {u"show"_s, u"--config"_s},
        {u"show"_s, u"--config"_s, u"--json"_s},
        {u"show"_s, u"--config="_s},
        {u"show"_s, u"--json=yes"_s},
        {u"show"_s, u"--json"_s, u"--json"_s},
        {u"catalog"_s, u"surplus"_s},
        {u"batch"_s},
        {u"batch"_s, u"-"_s, u"surplus"_s},
        {u"init"_s},
        {u"init"_s, u"other"_s, u"--mode"_s, u"both"_s},
        {u"new"_s},
        {u"load"_s},
        {u"save-as"_s},
        {u"refresh"_s},
        {u"attr-config"_s, u"surplus"_s},
        {u"write-head"_s},
        {u"unwrap"_s, u"file"_s},
        {u"library"_s, u"frob"_s},
        {u"library"_s, u"use"_s},
        {u"library"_s, u"use"_s, u"GB50500-2008"_s, u"--json"_s},
        {u"import"_s, u"calc"_s, u"x.csv"_s, u"--library"_s, u"GB50500-2008"_s},
        {u"export"_s, u"libraries"_s, u"-"_s, u"--library"_s, u"GB50500-2008"_s},
        {u"unwrap"_s, u"-o"_s, u"out"_s},
        {u"demo"_s, u"a"_s, u"b"_s},
    };
    for (const QStringList& arguments : wrong) {
        SCOPED_TRACE(arguments.join(u' ').toStdString());
        ExpectUsageError(cli.RunInProject(arguments), u"用法：ktqdde "_s);
        EXPECT_TRUE(cli.RunInProject(arguments).Err().contains(arguments[0]));
    }
    EXPECT_FALSE(cli.Folder().Exists(u"other"_s));
}

TEST(Usage, WithoutAProjectTheVerbSaysHowToNameOne)
{
    const test::Outcome outcome = Cli(u"bill"_s).Run({u"show"_s});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(outcome.Err().contains(u"KTQDDE_PROJECT"_s));
}

TEST(Usage, ProjectMayComeBeforeTheVerbBehindItOrFromTheEnvironment)
{
    Cli cli(u"bill"_s);
    EXPECT_EQ(cli.Run({u"--project"_s, u"project"_s, u"show"_s}).status, 0);
    EXPECT_EQ(cli.Run({u"--project=project"_s, u"show"_s}).status, 0);
    EXPECT_EQ(cli.Run({u"show"_s, u"--project"_s, u"project"_s}).status, 0);
    cli.SetVariable(u"KTQDDE_PROJECT"_s, u"project"_s);
    EXPECT_EQ(cli.Run({u"show"_s}).status, 0);
    EXPECT_EQ(cli.Run({u"show"_s, u"--project"_s, u"nowhere"_s}).status, 1)
        << "the option counts, not the variable";
}

TEST(Usage, FolderWithoutAProjectIsRefused)
{
    const Cli cli;
    cli.Folder().MakeFolder(u"empty"_s);
    const test::Outcome outcome = cli.Run({u"--project"_s, u"empty"_s, u"show"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.Err().contains(u"empty"_s));
}

TEST(Init, CreatesAProjectOfThatModeAndSpecialty)
{
    const Cli cli;
    const test::Outcome made =
        cli.Run({u"init"_s, u"工程"_s, u"--mode"_s, u"quota"_s, u"--spec"_s, u"电气"_s});
    EXPECT_EQ(made.status, 0) << made.err.toStdString();
    const QJsonObject shown = cli.Run({u"--project"_s, u"工程"_s, u"show"_s, u"--json"_s}).Json();
    EXPECT_EQ(shown.value(u"mode"_s).toString(), u"quota"_s);
    EXPECT_EQ(shown.value(u"spec"_s).toString(), u"电气"_s);
}

TEST(Init, WithoutOptionsItIsBillModeAndTheFirstSpecialty)
{
    const Cli cli;
    EXPECT_EQ(cli.Run({u"init"_s, u"p"_s}).status, 0);
    const QJsonObject shown = cli.Run({u"--project"_s, u"p"_s, u"show"_s, u"--json"_s}).Json();
    EXPECT_EQ(shown.value(u"mode"_s).toString(), u"bill"_s);
    EXPECT_EQ(shown.value(u"spec"_s).toString(), u"给排水"_s);
}

TEST(Init, RefusesAnUnknownSpecialtyAndASecondProject)
{
    const Cli cli;
    const test::Outcome unknown = cli.Run({u"init"_s, u"p"_s, u"--spec"_s, u"园林"_s});
    EXPECT_EQ(unknown.status, 1);
    EXPECT_TRUE(unknown.Err().contains(u"园林"_s));
    EXPECT_EQ(cli.Run({u"init"_s, u"p"_s}).status, 0);
    EXPECT_EQ(cli.Run({u"init"_s, u"p"_s}).status, 1);
}

TEST(Init, TakesTheLibrariesByTheirCodes)
{
    const Cli cli;
    EXPECT_EQ(cli.Run({u"init"_s, u"p"_s, u"--mode"_s, u"quota"_s, u"--bill-library"_s, u"GB50500-2008"_s,
                       u"--quota-library"_s, u"DEMO-DE-2025"_s})
                  .status,
              0);
    const QString listed = cli.Run({u"--project"_s, u"p"_s, u"library"_s}).Out();
    for (const QString& code : {u"GB50500-2008"_s, u"DEMO-QDDE-2025"_s, u"DEMO-DE-2025"_s})
        EXPECT_TRUE(QRegularExpression(u"\\n\\* .* %1 "_s.arg(code)).match(listed).hasMatch())
            << listed.toStdString();
}

TEST(Init, RefusesALibraryThatIsUnknownOrOfTheOtherMode)
{
    const Cli cli;
    const test::Outcome unknown = cli.Run({u"init"_s, u"p"_s, u"--bill-library"_s, u"GB1"_s});
    EXPECT_EQ(unknown.status, 1);
    EXPECT_TRUE(unknown.Err().contains(u"GB50500-2008"_s)) << unknown.err.toStdString();
    const test::Outcome other = cli.Run({u"init"_s, u"p"_s, u"--quota-library"_s, u"DEMO-DE-2025"_s});
    EXPECT_EQ(other.status, 1);
    EXPECT_FALSE(cli.Folder().Exists(u"p"_s));
}

// A device that takes nothing, as a full disk does; not every system has one.
TEST(StandardOutput, ThatCannotBeWrittenIsToldWithTheReason)
{
    const QString full = u"/dev/full"_s;
    if (!QFile::exists(full)) GTEST_SKIP();
    Cli cli(u"bill"_s);
    cli.SendOutputTo(full);
    const test::Outcome shown = cli.RunInProject({u"catalog"_s});
    EXPECT_EQ(shown.status, 1);
    EXPECT_TRUE(shown.Err().contains(QRegularExpression(u"标准输出写不进去：\\S"_s)))
        << shown.err.toStdString();
    const test::Outcome batch = cli.Batch("{\"op\":\"Save\"}\n");
    EXPECT_EQ(batch.status, 1);
    EXPECT_TRUE(batch.Err().contains(QRegularExpression(u"第 1 行之后没有再做下去：标准输出写不进去：\\S"_s)))
        << batch.err.toStdString();
}
