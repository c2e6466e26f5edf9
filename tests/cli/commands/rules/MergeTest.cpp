#include "cli/commands/rules/MergeCommand.h"

#include "cli/CliTesting.h"
#include "cli/commands/rules/PipeFile.h"
#include "cli/reading/Failure.h"
#include "embedded/data/history/RuleFileLock.h"
#include "platform/Files.h"
#include "support/Patience.h"
#include "support/SourceTree.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::Cli;
using test::PipeElement;

namespace {

/// A specialty that no merge touches.
const QByteArray Electric = "  <电气  id='2' name='电气'><LMember name='灯具'/>  </电气>\n";

QByteArray File(const QByteArray& rules)
{
    return test::PipeFile(rules, Electric);
}

const QByteArray Base = File(PipeElement(2, "钢管") + PipeElement(3, "铜管"));
const QByteArray Mine = File(PipeElement(2, "钢管", "个数") + PipeElement(3, "铜管"));
const QByteArray Theirs = File(PipeElement(2, "钢管") + PipeElement(3, "铜管") + PipeElement(4, "PE管"));
const QByteArray Against = File(PipeElement(2, "钢管", "长度") + PipeElement(3, "铜管"));

class MergeVerb : public testing::Test
{
protected:
    test::Outcome Merge(const QByteArray& base, const QByteArray& mine, const QByteArray& theirs,
                        const QStringList& options = {u"-o"_s, u"out.xml"_s}) const
    {
        m_cli.Folder().WriteFile(u"base.xml"_s, base);
        m_cli.Folder().WriteFile(u"mine.xml"_s, mine);
        m_cli.Folder().WriteFile(u"theirs.xml"_s, theirs);
        return m_cli.Run(QStringList{u"merge"_s, u"base.xml"_s, u"mine.xml"_s, u"theirs.xml"_s} + options);
    }
    /// The rules of a file as lines.
    QString Shown(const QString& file = u"out.xml"_s) const { return m_cli.Run({u"show"_s, file}).Out(); }
    QByteArray Out() const { return m_cli.Folder().ReadFile(u"out.xml"_s); }

    Cli m_cli;
};

/// While it lives, another program saves a file as soon as it has been read.
class SavedMeanwhile : public platform::FileSystemProxy
{
public:
    SavedMeanwhile(const test::TempFolder& folder, CString name, QByteArray bytes)
        : FileSystemProxy(platform::Files()), m_folder(folder), m_name(std::move(name)),
          m_bytes(std::move(bytes)), m_installed(*this)
    {
    }

    std::optional<QByteArray> Read(const CString& path, CString* reason) override
    {
        auto read = FileSystemProxy::Read(path, reason);
        if (path.endsWith(m_name)) m_folder.WriteFile(m_name, m_bytes);
        return read;
    }

private:
    const test::TempFolder& m_folder;
    CString m_name;
    QByteArray m_bytes;
    platform::ScopedFileSystem m_installed;
};

} // namespace

TEST_F(MergeVerb, TakesBothEditsAndKeepsTheBytesOfOtherSpecialties)
{
    const test::Outcome outcome = Merge(Base, Mine, Theirs);
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(Out().contains(Electric)) << Out().toStdString();
    EXPECT_TRUE(Shown().contains(u"材质＝PE管;"_s)) << Shown().toStdString();
    EXPECT_TRUE(Shown().contains(u"：个数"_s));
    EXPECT_TRUE(outcome.Out().contains(u"加了 1 条"_s)) << outcome.out.toStdString();
    EXPECT_EQ(m_cli.Folder().ReadFile(u"mine.xml"_s), Mine);
}

TEST_F(MergeVerb, SideThatIsTheBaseGivesTheOtherToTheByte)
{
    EXPECT_EQ(Merge(Base, Base, Theirs).status, 0);
    EXPECT_EQ(Out(), Theirs);
    EXPECT_EQ(Merge(Base, Mine, Base, {u"-o"_s, u"out.xml"_s, u"--force"_s}).status, 0);
    EXPECT_EQ(Out(), Mine);
}

TEST_F(MergeVerb, ConflictWithoutAnAnswerWritesNothingAndTellsBothSides)
{
    const test::Outcome outcome = Merge(Base, Mine, Against);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_FALSE(m_cli.Folder().Exists(u"out.xml"_s));
    for (const QString& text :
         {u"冲突 1/1"_s, u"管道长度 改为 个数"_s, u"管道长度 改为 长度"_s, u"什么也没有写"_s})
        EXPECT_TRUE(outcome.Err().contains(text)) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.out.isEmpty());
}

TEST_F(MergeVerb, PreferAnswersEveryConflict)
{
    EXPECT_EQ(Merge(Base, Mine, Against, {u"-o"_s, u"out.xml"_s, u"--prefer"_s, u"mine"_s}).status, 0);
    EXPECT_TRUE(Shown().contains(u"：个数"_s));
    EXPECT_EQ(
        Merge(Base, Mine, Against, {u"-o"_s, u"out.xml"_s, u"--prefer"_s, u"theirs"_s, u"--force"_s}).status,
        0);
    EXPECT_TRUE(Shown().contains(u"：长度"_s));
}

TEST_F(MergeVerb, EmptyBaseIsAFileThatBothMade)
{
    ASSERT_EQ(Merge({}, File(PipeElement(2, "钢管")), File(PipeElement(2, "铜管"))).status, 0);
    EXPECT_TRUE(Shown().contains(u"材质＝钢管;"_s));
    EXPECT_TRUE(Shown().contains(u"材质＝铜管;"_s));
    EXPECT_TRUE(Out().contains("<Config id=\"3\"")) << "two rules of one id";
}

TEST_F(MergeVerb, OutMayBeMine)
{
    EXPECT_EQ(Merge(Base, Mine, Theirs, {u"-o"_s, u"mine.xml"_s}).status, 0);
    EXPECT_TRUE(Shown(u"mine.xml"_s).contains(u"材质＝PE管;"_s));
}

TEST_F(MergeVerb, OtherFilesAreReplacedOnlyWhenThatIsAsked)
{
    const test::Outcome outcome = Merge(Base, Mine, Theirs, {u"-o"_s, u"theirs.xml"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.Err().contains(u"已经存在，覆盖请加 --force"_s)) << outcome.err.toStdString();
    EXPECT_EQ(m_cli.Folder().ReadFile(u"theirs.xml"_s), Theirs);
    EXPECT_EQ(Merge(Base, Mine, Theirs, {u"-o"_s, u"theirs.xml"_s, u"--force"_s}).status, 0);
    EXPECT_TRUE(Shown(u"theirs.xml"_s).contains(u"：个数"_s));
    EXPECT_EQ(Merge(Base, Mine, Theirs, {u"-o"_s, u"./mine.xml"_s}).status, 0) << "another spelling of MINE";
}

TEST(MergedMeanwhile, FileThatAnotherProgramHasSavedIsNotWrittenOver)
{
    for (const QString& saved : {u"base.xml"_s, u"mine.xml"_s, u"theirs.xml"_s, u"out.xml"_s}) {
        const test::TempFolder temp;
        temp.WriteFile(u"base.xml"_s, Base);
        temp.WriteFile(u"mine.xml"_s, Mine);
        temp.WriteFile(u"theirs.xml"_s, Theirs);
        temp.WriteFile(u"out.xml"_s, Against);
        const CArray<cli::Option> options =
            cli::MergeCommand().Info().options + CArray<cli::Option>{{u"project"_s, u"DIR"_s, {}, {}}};
        const cli::Arguments arguments({temp.Native(u"base.xml"_s), temp.Native(u"mine.xml"_s),
                                        temp.Native(u"theirs.xml"_s), u"-o"_s, temp.Native(u"out.xml"_s),
                                        u"--force"_s},
                                       options);
        const QByteArray other = File(PipeElement(9, "别的"));
        const SavedMeanwhile files(temp, saved, other);
        CString told;
        try {
            cli::MergeCommand().Run(arguments);
        } catch (const cli::Refusal& refusal) {
            told = CString::fromUtf8(refusal.what());
        }
        EXPECT_TRUE(told.contains(saved + u" 在合并期间变了"_s)) << saved.toStdString() << told.toStdString();
        EXPECT_EQ(temp.ReadFile(u"out.xml"_s), saved == u"out.xml" ? other : Against);
        EXPECT_EQ(temp.ReadFile(saved), other);
    }
}

TEST_F(MergeVerb, BadInputIsRefusedAndWritesNothing)
{
    EXPECT_EQ(Merge(Base, "<a>", Theirs).status, 1);
    EXPECT_EQ(Merge(Base, Mine, {}).status, 1) << "only the base may be empty";
    EXPECT_EQ(Merge("no xml", Mine, Theirs).status, 1);
    QByteArray twice = Theirs;
    twice.replace(Electric, Electric + Electric);
    EXPECT_EQ(Merge(Base, Mine, twice).status, 1) << "a specialty twice";
    EXPECT_FALSE(m_cli.Folder().Exists(u"out.xml"_s));
    EXPECT_EQ(Merge(Base, Mine, Theirs, {}).status, 2);
    EXPECT_EQ(Merge(Base, Mine, Theirs, {u"-o"_s, u"out.xml"_s, u"--prefer"_s, u"both"_s}).status, 2);
    EXPECT_EQ(m_cli.Run({u"merge"_s, u"base.xml"_s, u"mine.xml"_s, u"-o"_s, u"out.xml"_s}).status, 2);
    m_cli.Folder().WriteFile(u"out.xml"_s, "notes");
    EXPECT_EQ(Merge(Base, Mine, Theirs, {u"-o"_s, u"out.xml"_s, u"--force"_s}).status, 1) << "no rule file";
    EXPECT_EQ(Out(), "notes");
}

TEST_F(MergeVerb, SideInWhichSomethingStandsTwiceIsRefusedUnlessItIsTheResult)
{
    const QByteArray big = "<LMember id=\"1\" name=\"管道\">";
    const QByteArray small =
        "<SMember id=\"1\" name=\"给水管\"><Config>" + PipeElement(9, "旧管") + "</Config></SMember>";
    const auto withTwo = [](QByteArray file, const QByteArray& before, const QByteArray& second) {
        return file.insert(file.indexOf(before), second);
    };
    const QByteArray end = "</LMember></给排水>";
    const QByteArray mine = withTwo(Mine, end, small);
    const QByteArray theirs = withTwo(Theirs, end, small);
    const auto isRefused = [&](const test::Outcome& outcome, const QString& file, const QString& place) {
        EXPECT_EQ(outcome.status, 1);
        EXPECT_FALSE(m_cli.Folder().Exists(u"out.xml"_s));
        EXPECT_TRUE(outcome.Err().contains(file + u"：“"_s + place)) << outcome.err.toStdString();
    };
    isRefused(Merge(Base, mine, Theirs), u"mine.xml"_s, u"给排水\\管道\\给水管”在文件中不止一段"_s);
    isRefused(Merge(Base, Mine, theirs), u"theirs.xml"_s, u"给排水\\管道\\给水管”在文件中不止一段"_s);
    isRefused(Merge(Base, withTwo(Mine, "</给排水>", big + small + "</LMember>"), Theirs), u"mine.xml"_s,
              u"给排水\\管道”在文件中不止一段"_s);
    isRefused(Merge(Base, Mine, withTwo(Theirs, "<Qd>", "<Condition/>")), u"theirs.xml"_s,
              u"给排水\\管道\\给水管”第 1 条规则的“Condition”在文件中不止一段"_s);
    EXPECT_EQ(Merge(Base, Base, theirs).status, 0);
    EXPECT_EQ(Out(), theirs) << "to the byte, so that nothing is lost";
    EXPECT_EQ(Merge(withTwo(Base, end, small), Mine, Theirs, {u"-o"_s, u"out.xml"_s, u"--force"_s}).status, 0)
        << "nothing of the base is written";
}

TEST_F(MergeVerb, RuleFileThatAnotherProgramHoldsIsNotWrittenOutsideAProjectEither)
{
    m_cli.Folder().WriteFile(u"out.xml"_s, Base);
    m_cli.SetVariable(u"KTQDDE_LOCK_WAIT"_s, u"0"_s);
    const QStringList over{u"-o"_s, u"out.xml"_s, u"--force"_s};
    {
        const embedded::RuleFileLock held(CStringArray{m_cli.Folder().Path(u"out.xml"_s)});
        const test::Outcome outcome = Merge(Base, Mine, Theirs, over);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_TRUE(outcome.Err().contains(u"（进程 %1，机器 "_s.arg(QCoreApplication::applicationPid())))
            << outcome.err.toStdString();
        EXPECT_EQ(Out(), Base);
    }
    EXPECT_EQ(Merge(Base, Mine, Theirs, over).status, 0);
    EXPECT_FALSE(QFile::exists(m_cli.Folder().Native(u".out.xml.lock"_s)));
}

TEST_F(MergeVerb, RuleFileOfAProjectIsKeptFirst)
{
    const Cli cli(u"bill"_s);
    cli.Folder().MakeFolder(u"project\\app\\自动套配置"_s);
    cli.Folder().WriteFile(Cli::RuleFile(), Mine);
    cli.Folder().WriteFile(u"base.xml"_s, Base);
    cli.Folder().WriteFile(u"theirs.xml"_s, Theirs);
    const test::Outcome outcome = cli.RunInProject(
        {u"merge"_s, u"./base.xml"_s, u"DefaultConfig"_s, u"./theirs.xml"_s, u"-o"_s, u"DefaultConfig"_s});
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_NE(cli.Folder().ReadFile(Cli::RuleFile()), Mine);
    EXPECT_EQ(cli.RunInProject({u"history"_s, u"show"_s, u"last"_s, u"--xml"_s}).out, Mine);
    const test::Outcome difference = cli.RunInProject({u"history"_s, u"diff"_s, u"last"_s});
    EXPECT_TRUE(difference.Out().contains(u"加了第 3 条：材质＝PE管;"_s)) << difference.out.toStdString();
    EXPECT_TRUE(
        cli.RunInProject({u"history"_s, u"show"_s, u"last"_s}).Out().startsWith(u"给排水\\管道\\给水管"_s));
}

namespace {

/// A repository in the test's own folder, which git takes for the home, too.
class Git : public testing::Test
{
protected:
    Git()
    {
        Run({u"init"_s, u"-q"_s, u"-b"_s, u"main"_s});
        Run({u"config"_s, u"user.name"_s, u"test"_s});
        Run({u"config"_s, u"user.email"_s, u"test@example.org"_s});
        const QString program = QStringLiteral(KTQDDE_PROGRAM);
        Run({u"config"_s, u"merge.ktqdde.driver"_s, u"'%1' merge %O %A %B -o %A"_s.arg(program)});
        Run({u"config"_s, u"diff.ktqdde.textconv"_s, u"'%1' show"_s.arg(program)});
        Write(u".gitattributes"_s, "*.xml merge=ktqdde diff=ktqdde\n");
        Commit(Base);
    }

    QString Run(const QStringList& words, int expected = 0) const
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(u"KTQDDE_PROJECT"_s);
        for (const QString& name : environment.keys())
            if (name.startsWith(u"GIT_"_s)) environment.remove(name);
        environment.insert(u"HOME"_s, m_folder.Native({}));
        environment.insert(u"XDG_CONFIG_HOME"_s, m_folder.Native({}));
        environment.insert(u"GIT_CONFIG_NOSYSTEM"_s, u"1"_s);
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(m_folder.Native({}));
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(u"git"_s, words);
        process.closeWriteChannel();
        test::WaitForEnd(process);
        QString output = QString::fromUtf8(process.readAll());
        EXPECT_EQ(process.exitCode(), expected) << words.join(u' ').toStdString() << output.toStdString();
        return output;
    }
    void Write(const QString& name, const QByteArray& bytes) const { m_folder.WriteFile(name, bytes); }
    void Commit(const QByteArray& rules) const
    {
        Write(u"rules.xml"_s, rules);
        Run({u"add"_s, u"-A"_s});
        Run({u"commit"_s, u"-q"_s, u"-m"_s, u"edit"_s});
    }
    /// Makes a branch "theirs" of the base with those rules, and commits others on the main branch.
    void Diverge(const QByteArray& mine, const QByteArray& theirs) const
    {
        Run({u"checkout"_s, u"-q"_s, u"-b"_s, u"theirs"_s});
        Commit(theirs);
        Run({u"checkout"_s, u"-q"_s, u"main"_s});
        Commit(mine);
    }
    QByteArray Rules() const { return m_folder.ReadFile(u"rules.xml"_s); }

    test::TempFolder m_folder;
};

} // namespace

TEST_F(Git, MergesRuleFilesByRule)
{
    Diverge(Mine, File(PipeElement(2, "钢管") + PipeElement(3, "铜管") + PipeElement(4, "PE管")));
    Run({u"merge"_s, u"-q"_s, u"theirs"_s});
    EXPECT_TRUE(Rules().contains("PE管")) << Rules().toStdString();
    EXPECT_TRUE(Rules().contains("strFormula=\"个数\""));
    EXPECT_TRUE(Rules().contains(Electric));
    EXPECT_TRUE(Run({u"status"_s, u"--porcelain"_s}).isEmpty());
}

TEST_F(Git, MergesRulesThatBothSidesAddedAtOnePlace)
{
    Diverge(File(PipeElement(2, "钢管") + PipeElement(3, "铜管") + PipeElement(4, "PE管")),
            File(PipeElement(2, "钢管") + PipeElement(3, "铜管") + PipeElement(4, "PPR管")));
    Run({u"merge"_s, u"-q"_s, u"theirs"_s});
    EXPECT_TRUE(Rules().contains("PE管"));
    EXPECT_TRUE(Rules().contains("PPR管"));
    EXPECT_EQ(Rules().count("<Config id=\"4\""), 1) << Rules().toStdString();
}

TEST_F(Git, LeavesAConflictToThePersonWithMyFileAsItIs)
{
    Diverge(Mine, Against);
    const QString told = Run({u"merge"_s, u"theirs"_s}, 1);
    EXPECT_TRUE(told.contains(u"冲突 1/1"_s)) << told.toStdString();
    EXPECT_EQ(Rules(), Mine);
    EXPECT_TRUE(Run({u"status"_s, u"--porcelain"_s}).startsWith(u"UU rules.xml"_s));
}

TEST_F(Git, ShowsDifferencesAsRules)
{
    Commit(Theirs);
    const QString told = Run({u"diff"_s, u"HEAD~1"_s, u"HEAD"_s});
    EXPECT_TRUE(told.contains(u"+  材质＝PE管;"_s)) << told.toStdString();
    EXPECT_FALSE(told.contains(u"strCFType"_s));
}
