#include "cli/CliTesting.h"
#include "support/Patience.h"
#include "support/StrictXml.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::Cli;

namespace {

/// A project whose current configuration is the sample.
class FileVerbs : public testing::Test
{
protected:
    FileVerbs() : m_cli(u"bill"_s)
    {
        m_cli.Folder().MakeFolder(u"project\\app\\自动套配置"_s);
        m_cli.Folder().WriteFile(Cli::RuleFile(), Cli::Sample());
    }

    /// The name that the project's ini gives.
    QByteArray CurrentName() const
    {
        const QByteArray ini = m_cli.Folder().ReadFile(u"project\\SysRegedit.ini"_s);
        const qsizetype at = ini.indexOf("ConfigName=");
        return at < 0 ? QByteArray() : ini.mid(at + 11).split('\n')[0].trimmed();
    }

    Cli m_cli;
};

} // namespace

TEST_F(FileVerbs, NewCopiesTheTemplateAndMakesItCurrent)
{
    const test::Outcome outcome = m_cli.RunInProject({u"new"_s, u"新.配置"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(m_cli.Folder().ReadFile(Cli::RuleFile(u"新.配置"_s)),
              m_cli.Folder().ReadFile(u"project\\app\\QdDeConfig.def"_s));
    EXPECT_EQ(CurrentName(), "新.配置");
}

TEST_F(FileVerbs, NewOverwritesOnlyWhenForced)
{
    m_cli.Folder().WriteFile(Cli::RuleFile(u"有"_s), Cli::Sample());
    EXPECT_EQ(m_cli.RunInProject({u"new"_s, u"有"_s}).status, 1);
    EXPECT_EQ(m_cli.Folder().ReadFile(Cli::RuleFile(u"有"_s)), Cli::Sample());
    EXPECT_EQ(m_cli.RunInProject({u"new"_s, u"有"_s, u"--force"_s}).status, 0);
    EXPECT_NE(m_cli.Folder().ReadFile(Cli::RuleFile(u"有"_s)), Cli::Sample());
}

TEST_F(FileVerbs, NewWithoutATemplateIsRefused)
{
    EXPECT_TRUE(QFile::remove(m_cli.Folder().Native(u"project\\app\\QdDeConfig.def"_s)));
    const test::Outcome outcome = m_cli.RunInProject({u"new"_s, u"新"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.Err().contains(u"文件不存在，请重新选择调用文件!"_s)) << outcome.err.toStdString();
    EXPECT_FALSE(m_cli.Folder().Exists(Cli::RuleFile(u"新"_s)));
}

TEST_F(FileVerbs, NamesThatCannotBeConfigurationsAreRefused)
{
    for (const QString& name : {u""_s, u" 首"_s, u"尾 "_s, u"a/b"_s, u"a\\b"_s, u"a:b"_s, u"a*b"_s, u"a\"b"_s,
                                u"a\nb"_s, QString(100, u'长')}) {
        for (const QString& verb : {u"new"_s, u"save-as"_s}) {
            const test::Outcome outcome = m_cli.RunInProject({verb, name});
            EXPECT_EQ(outcome.status, 1) << name.toStdString();
            EXPECT_TRUE(outcome.Err().contains(u"配置名"_s) || outcome.Err().contains(u"路径"_s));
        }
    }
    EXPECT_EQ(m_cli.RunInProject({u"new"_s, QString(50, u'长')}).status, 0);
}

TEST_F(FileVerbs, ReasonOfAFullDiskIsTold)
{
    if (!QFile::exists(u"/bin/sh"_s)) GTEST_SKIP() << "a limit of file sizes is set by a shell";
    ASSERT_EQ(m_cli.RunInProject({u"save-as"_s, u"先"_s}).status, 0); // the history has its copy
    const QByteArray former = m_cli.Folder().ReadFile(Cli::RuleFile(u"先"_s));
    // A template for which there is no room where there is some for the rule files.
    const QString model = u"project\\app\\QdDeConfig.def"_s;
    m_cli.Folder().WriteFile(model,
                             m_cli.Folder().ReadFile(model) + "<!--" + QByteArray(100'000, 'x') + "-->");
    for (const QString& command : {u"ulimit -f 150; exec \"$0\" --project project new 新"_s,
                                   u"ulimit -f 150; exec \"$0\" --project project new 先 --force"_s,
                                   u"ulimit -f 8; exec \"$0\" --project project save-as 后"_s}) {
        QProcess shell;
        shell.setWorkingDirectory(m_cli.Folder().Native({}));
        shell.start(u"/bin/sh"_s, {u"-c"_s, command, QStringLiteral(KTQDDE_PROGRAM)});
        test::WaitForEnd(shell);
        const QString error = QString::fromUtf8(shell.readAllStandardError());
        EXPECT_EQ(shell.exitCode(), 1) << command.toStdString() << error.toStdString();
        EXPECT_TRUE(error.contains(QRegularExpression(u"没有成功：.*\\.xml：\\S"_s))) << error.toStdString();
    }
    EXPECT_FALSE(m_cli.Folder().Exists(Cli::RuleFile(u"新"_s)));
    EXPECT_FALSE(m_cli.Folder().Exists(Cli::RuleFile(u"后"_s)));
    EXPECT_EQ(m_cli.Folder().ReadFile(Cli::RuleFile(u"先"_s)), former);
    EXPECT_NE(CurrentName(), QByteArrayLiteral("先"));
}

TEST_F(FileVerbs, NameThatNoFileSystemHoldsIsRefusedWithItsLimit)
{
    EXPECT_EQ(m_cli.RunInProject({u"new"_s, QString(83, u'管')}).status, 0);
    for (const QString& verb : {u"new"_s, u"save-as"_s}) {
        const test::Outcome outcome = m_cli.RunInProject({verb, QString(84, u'管')});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_TRUE(outcome.Err().contains(u"最多 255 字节，一个汉字占 3 字节"_s))
            << outcome.err.toStdString();
    }
}

TEST_F(FileVerbs, SaveAsWritesACopyAndKeepsTheCurrentConfiguration)
{
    const QByteArray before = CurrentName();
    EXPECT_EQ(m_cli.RunInProject({u"save-as"_s, u"副本"_s}).status, 0);
    EXPECT_TRUE(test::IsStrictXml(m_cli.Folder().ReadFile(Cli::RuleFile(u"副本"_s))));
    EXPECT_TRUE(m_cli.Folder().ReadFile(Cli::RuleFile(u"副本"_s)).contains("031001001002"));
    EXPECT_EQ(CurrentName(), before);
    EXPECT_EQ(m_cli.Folder().ReadFile(Cli::RuleFile()), Cli::Sample());
    EXPECT_EQ(m_cli.RunInProject({u"save-as"_s, u"副本"_s}).status, 1);
    EXPECT_EQ(m_cli.RunInProject({u"save-as"_s, u"副本"_s, u"--force"_s}).status, 0);
}

TEST_F(FileVerbs, LoadMakesAConfigurationOfTheRuleFolderCurrent)
{
    m_cli.Folder().WriteFile(Cli::RuleFile(u"甲"_s), Cli::Sample());
    const test::Outcome outcome = m_cli.RunInProject({u"load"_s, u"甲"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(CurrentName(), "甲");
    EXPECT_FALSE(outcome.Out().contains(u"注意"_s));
}

TEST_F(FileVerbs, LoadOfAFileElsewhereSaysWhatTheProjectRemembers)
{
    m_cli.Folder().WriteFile(u"外.xml"_s, Cli::Sample());
    const test::Outcome outcome = m_cli.RunInProject({u"load"_s, u"外.xml"_s});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(CurrentName(), "外");
    EXPECT_TRUE(outcome.Out().contains(u"注意"_s));
    EXPECT_TRUE(outcome.Out().contains(m_cli.Folder().Native(Cli::RuleFile(u"外"_s))));
}

TEST_F(FileVerbs, LoadRefusesMissingAndForeignFilesAndChangesNothing)
{
    const QByteArray before = CurrentName();
    m_cli.Folder().WriteFile(u"bad.xml"_s, "<other/>");
    for (const QString& file : {u"./none.xml"_s, u"没有"_s, u"bad.xml"_s}) {
        EXPECT_EQ(m_cli.RunInProject({u"load"_s, file}).status, 1);
        EXPECT_EQ(m_cli.RunInProject({u"refresh"_s, file}).status, 1);
    }
    EXPECT_EQ(CurrentName(), before);
    EXPECT_FALSE(m_cli.Folder().Exists(Cli::RuleFile(u"没有"_s)));
}

TEST_F(FileVerbs, RefreshMakesTheFileCurrentOrSaysThatItDoesNotFit)
{
    m_cli.Folder().WriteFile(Cli::RuleFile(u"乙"_s), Cli::Sample());
    EXPECT_EQ(m_cli.RunInProject({u"refresh"_s, u"乙"_s}).status, 0);
    EXPECT_EQ(CurrentName(), "乙");
    m_cli.Folder().WriteFile(u"bad.xml"_s, "<other/>");
    const test::Outcome outcome = m_cli.RunInProject({u"refresh"_s, u"bad.xml"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.Err().contains(u"文件功能不匹配"_s));
    EXPECT_EQ(CurrentName(), "乙");
}

TEST_F(FileVerbs, BrokenCurrentConfigurationIsNotReplacedByTheSaveBeforeASwitch)
{
    m_cli.Folder().WriteFile(Cli::RuleFile(), "broken");
    m_cli.Folder().WriteFile(Cli::RuleFile(u"甲"_s), Cli::Sample());
    for (const QStringList& arguments : QList<QStringList>{{u"load"_s, u"甲"_s},
                                                           {u"refresh"_s, u"甲"_s},
                                                           {u"new"_s, u"丙"_s},
                                                           {u"save-as"_s, u"丁"_s},
                                                           {u"show"_s},
                                                           {u"batch"_s, u"-"_s}}) {
        const test::Outcome outcome = m_cli.RunInProject(arguments, "{\"op\":\"Save\"}\n");
        EXPECT_EQ(outcome.status, 1) << arguments[0].toStdString();
        EXPECT_TRUE(outcome.Err().contains(m_cli.Folder().Native(Cli::RuleFile())));
        EXPECT_EQ(m_cli.Folder().ReadFile(Cli::RuleFile()), "broken");
    }
}

TEST_F(FileVerbs, AttrConfigRebuildsTheFile)
{
    const test::Outcome outcome = m_cli.RunInProject({u"attr-config"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    const QByteArray file = m_cli.Folder().ReadFile(u"project\\app\\AttrConfig.xml"_s);
    EXPECT_TRUE(test::IsStrictXml(file));
    EXPECT_TRUE(file.contains("AM_NominalDiameter"));
}

TEST_F(FileVerbs, AttrConfigWithoutAttributeInformationIsRefused)
{
    EXPECT_TRUE(QFile::remove(m_cli.Folder().Native(u"project\\app\\AttributeInformation.xml"_s)));
    const test::Outcome outcome = m_cli.RunInProject({u"attr-config"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.Err().contains(u"AttributeInformation.xml"_s));
}

TEST_F(FileVerbs, RefreshOfAFileElsewhereSaysWhatTheProjectRemembers)
{
    m_cli.Folder().WriteFile(u"外.xml"_s, Cli::Sample());
    const test::Outcome outcome = m_cli.RunInProject({u"refresh"_s, u"外.xml"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.Out().contains(u"注意"_s));
    EXPECT_TRUE(outcome.Out().contains(m_cli.Folder().Native(Cli::RuleFile(u"外"_s))));
    const test::Outcome inside = m_cli.RunInProject({u"refresh"_s, u"DefaultConfig"_s});
    EXPECT_EQ(inside.status, 0);
    EXPECT_FALSE(inside.Out().contains(u"注意"_s));
}

TEST_F(FileVerbs, IniThatCannotBeWrittenIsNoSuccess)
{
    const QString ini = m_cli.Folder().Native(u"project\\SysRegedit.ini"_s);
    EXPECT_TRUE(!QFile::exists(ini) || QFile::remove(ini));
    m_cli.Folder().MakeFolder(u"project\\SysRegedit.ini"_s); // as good as write protection, for every user
    m_cli.Folder().WriteFile(Cli::RuleFile(u"甲"_s), Cli::Sample());
    for (const QStringList& arguments :
         QList<QStringList>{{u"load"_s, u"甲"_s}, {u"refresh"_s, u"甲"_s}, {u"new"_s, u"乙"_s}}) {
        const test::Outcome outcome = m_cli.RunInProject(arguments);
        EXPECT_EQ(outcome.status, 1) << arguments[0].toStdString();
        EXPECT_TRUE(outcome.Err().contains(u"SysRegedit.ini"_s)) << outcome.err.toStdString();
        EXPECT_TRUE(outcome.Err().contains(u"DefaultConfig"_s));
        EXPECT_TRUE(outcome.out.isEmpty()) << outcome.out.toStdString();
    }
    EXPECT_FALSE(m_cli.Folder().Exists(Cli::RuleFile(u"乙"_s))) << "a refused new leaves nothing";
    EXPECT_EQ(m_cli.RunInProject({u"new"_s, u"甲"_s, u"--force"_s}).status, 1);
    EXPECT_EQ(m_cli.Folder().ReadFile(Cli::RuleFile(u"甲"_s)), Cli::Sample());
}

TEST_F(FileVerbs, ConfigurationsUnderNamesThatTheModuleTakesAreWorkedOn)
{
    for (const QString& name : {u"a "_s, u" "_s, u"a\u3000"_s, u" 首"_s, u"a."_s}) {
        const QString file = Cli::RuleFile(name);
        m_cli.Folder().WriteFile(file, Cli::Sample());
        EXPECT_EQ(m_cli.RunInProject({u"load"_s, name}).status, 0) << name.toStdString();
        // It is the current one from now on, as after the module's own save-as.
        for (const QStringList& words : QList<QStringList>{{u"show"_s}, {u"show"_s, u"--config"_s, name}}) {
            const test::Outcome shown = m_cli.RunInProject(words);
            EXPECT_EQ(shown.status, 0) << name.toStdString() << shown.err.toStdString();
            EXPECT_TRUE(shown.Out().contains(u"031001001002"_s)) << name.toStdString();
        }
        const test::Outcome batch = m_cli.Batch("{\"op\":\"AddConfig\",\"path\":{\"category\":"
                                                "\"给排水\\\\管道\\\\给水管\"}}\n{\"op\":\"Save\"}\n");
        EXPECT_EQ(batch.status, 0) << name.toStdString() << batch.err.toStdString();
        EXPECT_NE(m_cli.Folder().ReadFile(file), Cli::Sample()) << name.toStdString();
        ASSERT_EQ(m_cli.RunInProject({u"load"_s, u"DefaultConfig"_s}).status, 0);
        EXPECT_EQ(m_cli.RunInProject({u"new"_s, name}).status, 1) << "it is there";
        EXPECT_EQ(m_cli.RunInProject({u"new"_s, name, u"--force"_s}).status, 0) << name.toStdString();
    }
}

TEST_F(FileVerbs, NameThatTheIniDoesNotGiveBackWholeIsTold)
{
    const QString longName(120, u'x');
    m_cli.Folder().WriteFile(Cli::RuleFile(longName), Cli::Sample());
    m_cli.Folder().WriteFile(u"project\\SysRegedit.ini"_s,
                             "[QdDeConfigInfo]\nConfigName=" + longName.toUtf8() + "\n");
    const test::Outcome outcome = m_cli.RunInProject({u"catalog"_s});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.Err().contains(longName)) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.Err().contains(u"打开的是“%1”"_s.arg(longName.left(99))))
        << outcome.err.toStdString();
    EXPECT_EQ(m_cli.RunInProject({u"show"_s, u"--config"_s, longName}).status, 0) << "the file is there";
    m_cli.Folder().WriteFile(u"project\\SysRegedit.ini"_s, "[QdDeConfigInfo]\nConfigName=short\n");
    EXPECT_TRUE(m_cli.RunInProject({u"catalog"_s}).err.isEmpty());
}

TEST_F(FileVerbs, PipesAndDevicesAreNoRuleFiles)
{
#if defined(_WIN32)
    GTEST_SKIP() << "there are none in the file system";
#endif
    for (const QString& verb : {u"load"_s, u"refresh"_s, u"write-head"_s}) {
        const test::Outcome outcome = m_cli.RunInProject({verb, u"/dev/zero"_s});
        EXPECT_EQ(outcome.status, 1) << verb.toStdString();
        EXPECT_TRUE(outcome.Err().contains(u"普通文件"_s)) << outcome.err.toStdString();
    }
}

TEST_F(FileVerbs, WriteHeadGivesTheFileBackThatTheDiskHasNoRoomToWrap)
{
    if (!QFile::exists(u"/bin/sh"_s)) GTEST_SKIP() << "a limit of file sizes is set by a shell";
    constexpr int Limit = 4096; // blocks
    constexpr int Block = 512;
    QByteArray former = m_cli.Folder().ReadFile(Cli::RuleFile()) + "<!--";
    former += QByteArray(Limit * Block - former.size() - 3, 'x') + "-->";
    m_cli.Folder().WriteFile(Cli::RuleFile(), former);
    QProcess shell;
    shell.setWorkingDirectory(m_cli.Folder().Native({}));
    const QString command =
        u"ulimit -f %1; exec \"$0\" --project project write-head DefaultConfig"_s.arg(Limit);
    shell.start(u"/bin/sh"_s, {u"-c"_s, command, QStringLiteral(KTQDDE_PROGRAM)});
    test::WaitForEnd(shell);
    const QString error = QString::fromUtf8(shell.readAllStandardError());
    EXPECT_EQ(shell.exitCode(), 1) << error.toStdString();
    EXPECT_TRUE(error.contains(u"DefaultConfig.xml"_s)) << error.toStdString();
    EXPECT_TRUE(m_cli.Folder().ReadFile(Cli::RuleFile()) == former);
}

TEST_F(FileVerbs, ExportsIntoPipesEnd)
{
    if (!QFile::exists(u"/bin/sh"_s)) GTEST_SKIP() << "there are no pipes in the file system";
    // The first program's standard output is a pipe; its reader takes one byte and goes: before the table is
    // written, which is told, or when it is, after which nobody listens to the report, or after that.
    for (const QString& command :
         {u"mkfifo p; \"$0\" --project project export attributes p --force"_s,
          u"{ \"$0\" --project project export bill /dev/stdout --force; echo $? >&2; } | head -c 1"_s}) {
        QProcess shell;
        shell.setWorkingDirectory(m_cli.Folder().Native({}));
        shell.start(u"/bin/sh"_s, {u"-c"_s, command, QStringLiteral(KTQDDE_PROGRAM)});
        test::WaitForEnd(shell);
        const QString error = QString::fromUtf8(shell.readAllStandardError());
        if (command.startsWith(u"mkfifo"_s)) {
            EXPECT_EQ(shell.exitCode(), 1);
            EXPECT_TRUE(error.contains(u"没有程序在读这个管道"_s)) << error.toStdString();
        } else {
            EXPECT_TRUE(error == u"0\n"_s || error == u"1\n"_s || error.endsWith(u"\n1\n"_s))
                << error.toStdString();
        }
    }
}

TEST_F(FileVerbs, NewProjectHasTheAttributeFileThatARebuildMakes)
{
    const QString file = u"project\\app\\AttrConfig.xml"_s;
    const QByteArray made = m_cli.Folder().ReadFile(file);
    EXPECT_FALSE(made.isEmpty());
    ASSERT_EQ(m_cli.RunInProject({u"attr-config"_s}).status, 0);
    EXPECT_EQ(m_cli.Folder().ReadFile(file), made);
}
