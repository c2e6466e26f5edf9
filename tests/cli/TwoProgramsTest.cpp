#include "cli/CliTesting.h"
#include "embedded/data/history/History.h"
#include "embedded/data/history/RuleFileLock.h"
#include "support/Patience.h"
#include "support/StrictXml.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QXmlStreamReader>

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <numeric>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;
using test::Cli;

namespace {

constexpr int UsualRounds = 6;
constexpr int Edits = 3;
const QByteArray Save = "{\"op\":\"Save\"}\n";

struct Specialty
{
    QString name;
    QByteArray category; ///< as JSON
};

const Specialty Water{u"给排水"_s, R"(给排水\\管道\\给水管)"};
const Specialty Power{u"电气"_s, R"(电气\\电缆桥架\\桥架)"};

QByteArray AddRule(const Specialty& specialty)
{
    return "{\"op\":\"AddConfig\",\"path\":{\"category\":\"" + specialty.category + "\"}}\n";
}

/// How many rules, without the default ones, a rule file holds in a specialty; -1 when it has none.
int RulesOf(const QByteArray& file, const Specialty& specialty)
{
    constexpr int specialtyDepth = 2;
    QXmlStreamReader xml(file);
    int depth = 0;
    int count = -1;
    bool inside = false;
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        if (token == QXmlStreamReader::EndElement) --depth;
        if (token != QXmlStreamReader::StartElement) continue;
        ++depth;
        if (depth == specialtyDepth) inside = xml.attributes().value(u"name"_s) == specialty.name;
        if (!inside) continue;
        if (count < 0) count = 0;
        if (xml.attributes().value(u"bDefault"_s) == u"0") ++count;
    }
    return count;
}

/// How many saves a batch has answered ok.
int SavesOf(const QByteArray& output)
{
    return static_cast<int>(output.count("\"op\":\"Save\",\"ok\":true"));
}

int Rounds()
{
    const int asked = qEnvironmentVariableIntValue("KTQDDE_ROUNDS");
    return asked > 0 ? asked : UsualRounds;
}

/// A project whose rule file has rules of two specialties, and programs that work on it at once.
class TwoPrograms : public testing::Test
{
protected:
    TwoPrograms() : m_cli(u"bill"_s)
    {
        EXPECT_EQ(m_cli.Batch(AddRule(Water) + Save).status, 0);
        EXPECT_EQ(m_cli.Batch(AddRule(Power) + Save, {u"--spec"_s, Power.name}).status, 0);
        m_first = Content();
        WriteScript(Water);
        WriteScript(Power);
    }

    QByteArray Content() const { return m_cli.Folder().ReadFile(Cli::RuleFile()); }

    void WriteScript(const Specialty& specialty) const
    {
        QByteArray script;
        for (int edit = 0; edit < Edits; ++edit)
            script += AddRule(specialty) + Save;
        m_cli.Folder().WriteFile(specialty.name + u".jsonl"_s, script);
    }

    using Process = std::unique_ptr<QProcess>;

    Process Start(const QString& program, const QStringList& arguments) const
    {
        auto process = std::make_unique<QProcess>();
        process->setWorkingDirectory(m_cli.Folder().Native({}));
        process->start(program, arguments);
        EXPECT_TRUE(process->waitForStarted(static_cast<int>(test::Patience().count())));
        return process;
    }

    Process StartBatch(const Specialty& specialty) const
    {
        return Start(QStringLiteral(KTQDDE_PROGRAM),
                     {u"--project"_s, u"project"_s, u"batch"_s, specialty.name + u".jsonl"_s, u"--spec"_s,
                      specialty.name});
    }

    /// Adds as many rules of the project's specialty as a batch does.
    Process StartDialog() const
    {
        return Start(QStringLiteral(KTQDDE_DIALOG_SAVER),
                     {m_cli.Folder().Native(u"project"_s), QString::number(Edits)});
    }

    /// Adds as many by the workbench's saves of a draft.
    Process StartWorkbench(const Specialty& specialty) const
    {
        const QString category = QString::fromUtf8(specialty.category).replace(u"\\\\"_s, u"\\"_s);
        return Start(QStringLiteral(KTQDDE_DIALOG_SAVER),
                     {m_cli.Folder().Native(u"project"_s), QString::number(Edits), category});
    }

    /// Runs the programs that `start` starts, again and again from the same file, and lets `check` look.
    template <typename Start, typename Check>
    void Repeat(const Start& start, const Check& check)
    {
        const int rounds = Rounds();
        for (int round = 0; round < rounds && !HasFailure(); ++round) {
            m_cli.Folder().WriteFile(Cli::RuleFile(), m_first);
            std::vector<Process> processes = start();
            for (const Process& process : processes)
                test::WaitForEnd(*process);
            const QByteArray file = Content();
            ASSERT_TRUE(test::IsStrictXml(file)) << "round " << round;
            check(processes, file);
            EXPECT_TRUE(Marks().isEmpty());
        }
        std::printf("[  ROUNDS  ] %d\n", rounds);
    }

    QString MarkFolder() const { return m_cli.Folder().Native(u"project\\history\\locks"_s); }
    QStringList Marks() const
    {
        return QDir(MarkFolder()).entryList({u"*.lock"_s}, QDir::Files | QDir::Hidden);
    }

    Cli m_cli;
    QByteArray m_first;
};

int Sum(int sum, const std::unique_ptr<QProcess>& process)
{
    return sum + SavesOf(process->readAllStandardOutput());
}

} // namespace

TEST_F(TwoPrograms, BatchesOnTwoSpecialtiesLoseNothing)
{
    Repeat(
        [&] {
            std::vector<Process> processes;
            processes.push_back(StartBatch(Water));
            processes.push_back(StartBatch(Power));
            return processes;
        },
        [&](const std::vector<Process>& processes, const QByteArray& file) {
            for (const Process& process : processes) {
                EXPECT_EQ(process->exitCode(), 0) << process->readAllStandardError().toStdString();
                EXPECT_EQ(SavesOf(process->readAllStandardOutput()), Edits);
            }
            EXPECT_EQ(RulesOf(file, Water), 1 + Edits);
            EXPECT_EQ(RulesOf(file, Power), 1 + Edits);
        });
}

TEST_F(TwoPrograms, TheDialogAndTwoBatchesLoseNothing)
{
    Repeat(
        [&] {
            std::vector<Process> processes;
            processes.push_back(StartDialog());
            processes.push_back(StartBatch(Power));
            processes.push_back(StartBatch(Power));
            return processes;
        },
        [&](const std::vector<Process>& processes, const QByteArray& file) {
            EXPECT_EQ(processes[0]->exitCode(), 0) << processes[0]->readAllStandardError().toStdString();
            EXPECT_EQ(RulesOf(file, Water), 1 + Edits);
            EXPECT_EQ(RulesOf(file, Power), std::accumulate(processes.begin() + 1, processes.end(), 1, Sum));
        });
}

TEST_F(TwoPrograms, TheWorkbenchAndTwoBatchesLoseNothing)
{
    Repeat(
        [&] {
            std::vector<Process> processes;
            processes.push_back(StartWorkbench(Water));
            processes.push_back(StartBatch(Power));
            processes.push_back(StartBatch(Power));
            return processes;
        },
        [&](const std::vector<Process>& processes, const QByteArray& file) {
            EXPECT_EQ(processes[0]->exitCode(), 0) << processes[0]->readAllStandardError().toStdString();
            EXPECT_EQ(RulesOf(file, Water), 1 + Edits);
            EXPECT_EQ(RulesOf(file, Power), std::accumulate(processes.begin() + 1, processes.end(), 1, Sum));
        });
}

TEST_F(TwoPrograms, TheDialogAndTheWorkbenchAndABatchLoseNothing)
{
    Repeat(
        [&] {
            std::vector<Process> processes;
            processes.push_back(StartDialog());
            processes.push_back(StartWorkbench(Power)); // merges what the batch has saved there
            processes.push_back(StartBatch(Power));
            return processes;
        },
        [&](const std::vector<Process>& processes, const QByteArray& file) {
            for (std::size_t editor = 0; editor < 2; ++editor)
                EXPECT_EQ(processes[editor]->exitCode(), 0)
                    << processes[editor]->readAllStandardError().toStdString();
            EXPECT_EQ(RulesOf(file, Water), 1 + Edits);
            EXPECT_EQ(RulesOf(file, Power), Sum(1 + Edits, processes[2]));
        });
}

TEST_F(TwoPrograms, BatchesOnOneSpecialtySaveOrAreRefused)
{
    Repeat(
        [&] {
            std::vector<Process> processes;
            for (int i = 0; i < 3; ++i)
                processes.push_back(StartBatch(Water));
            return processes;
        },
        [&](const std::vector<Process>& processes, const QByteArray& file) {
            for (const Process& process : processes) {
                const QString complaint = QString::fromUtf8(process->readAllStandardError());
                EXPECT_TRUE(process->exitCode() == 0 || complaint.contains(u"另一个程序改过"_s))
                    << complaint.toStdString();
            }
            EXPECT_EQ(RulesOf(file, Water), std::accumulate(processes.begin(), processes.end(), 1, Sum));
            EXPECT_EQ(RulesOf(file, Power), 1);
        });
}

/// A batch that is under way, and talked to line by line.
class BatchUnderWay : public TwoPrograms
{
protected:
    BatchUnderWay()
        : m_batch(Start(QStringLiteral(KTQDDE_PROGRAM),
                        {u"--project"_s, u"project"_s, u"batch"_s, u"-"_s, u"--keep-going"_s}))
    {
    }

    ~BatchUnderWay() override { test::Kill(*m_batch); }

    /// The answer to a line.
    QString Ask(const QByteArray& line)
    {
        m_batch->write(line);
        test::WaitFor(u"an answer"_s, [&] {
            m_batch->waitForReadyRead(10);
            return m_batch->canReadLine();
        });
        return QString::fromUtf8(m_batch->readLine());
    }

    Process m_batch;
};

TEST_F(BatchUnderWay, SaveIsRefusedWhenTheSameSpecialtyWasSavedMeanwhile)
{
    EXPECT_TRUE(Ask(AddRule(Water)).contains(u"\"ok\":true"_s));
    ASSERT_EQ(m_cli.Batch(AddRule(Water) + AddRule(Water) + Save).status, 0);
    const QByteArray before = Content();
    const QString answer = Ask(Save);
    EXPECT_TRUE(answer.contains(u"\"ok\":false"_s)) << answer.toStdString();
    EXPECT_TRUE(answer.contains(u"专业“给排水”已被另一个程序改过"_s)) << answer.toStdString();
    EXPECT_EQ(Content(), before);
    EXPECT_TRUE(Ask("{\"op\":\"SaveAs\",\"file\":\"./mine.xml\"}\n").contains(u"\"ok\":true"_s));
    EXPECT_EQ(RulesOf(m_cli.Folder().ReadFile(u"mine.xml"_s), Water), 2);
    EXPECT_FALSE(Ask(Save).contains(u"\"ok\":true"_s)) << "what SaveAs wrote is another file";
    EXPECT_EQ(Content(), before);
}

TEST_F(BatchUnderWay, SaveGoesOnWhenAnotherSpecialtyWasSavedMeanwhile)
{
    Ask(AddRule(Water));
    ASSERT_EQ(m_cli.Batch(AddRule(Power) + Save, {u"--spec"_s, Power.name}).status, 0);
    EXPECT_TRUE(Ask(Save).contains(u"\"ok\":true"_s));
    EXPECT_EQ(RulesOf(Content(), Power), 2);
    EXPECT_EQ(RulesOf(Content(), Water), 2);
}

TEST_F(BatchUnderWay, FileThatBreaksMeanwhileIsNotTakenForAnEmptyOne)
{
    Ask(AddRule(Water));
    const QByteArray broken = m_first.left(m_first.size() - 20);
    m_cli.Folder().WriteFile(Cli::RuleFile(), broken);
    const QString answer = Ask(Save);
    EXPECT_TRUE(answer.contains(u"规则文件读不了"_s)) << answer.toStdString();
    EXPECT_FALSE(Ask("{\"op\":\"SaveAs\",\"file\":\"./mine.xml\"}\n").contains(u"\"ok\":true"_s));
    EXPECT_EQ(Content(), broken);
}

TEST_F(BatchUnderWay, FileThatBreaksMeanwhileIsNotSavedOverOnTheWayToAnotherOne)
{
    m_cli.Folder().WriteFile(u"other.xml"_s, m_first);
    Ask(AddRule(Water));
    const QByteArray broken = m_first.left(m_first.size() - 20);
    m_cli.Folder().WriteFile(Cli::RuleFile(), broken);
    for (const QByteArray line : {"{\"op\":\"ReLoad\",\"file\":\"./other.xml\"}\n",
                                  "{\"op\":\"NewFile\",\"file\":\"./new.xml\"}\n"}) {
        const QString answer = Ask(line);
        EXPECT_TRUE(answer.contains(u"\"ok\":false"_s)) << answer.toStdString();
        EXPECT_TRUE(answer.contains(u"规则文件读不了"_s)) << answer.toStdString();
        EXPECT_EQ(Content(), broken);
    }
    EXPECT_FALSE(m_cli.Folder().Exists(u"new.xml"_s));
}

TEST_F(BatchUnderWay, AfterItsOwnSavesAndLoadsItGoesOnSaving)
{
    for (int save = 0; save < 2; ++save) {
        Ask(AddRule(Water));
        EXPECT_TRUE(Ask(Save).contains(u"\"ok\":true"_s));
    }
    EXPECT_TRUE(Ask("{\"op\":\"SaveAs\",\"file\":\"./mine.xml\"}\n").contains(u"\"ok\":true"_s));
    EXPECT_TRUE(Ask("{\"op\":\"ReLoad\",\"file\":\"./mine.xml\"}\n").contains(u"\"ok\":true"_s));
    Ask(AddRule(Water));
    EXPECT_TRUE(Ask(Save).contains(u"\"ok\":true"_s));
    EXPECT_EQ(RulesOf(m_cli.Folder().ReadFile(u"mine.xml"_s), Water), 4);
}

TEST_F(BatchUnderWay, SaveAsAndNewFileReplaceNothingButRuleFiles)
{
    const QByteArray note = "my notes\n";
    m_cli.Folder().WriteFile(u"note.txt"_s, note);
    const QByteArray ini = m_cli.Folder().ReadFile(u"project\\project.ktqd"_s);
    for (const QByteArray op : {"SaveAs", "NewFile"}) {
        for (const QByteArray file : {"./note.txt", "./project/project.ktqd"}) {
            const QString answer = Ask("{\"op\":\"" + op + "\",\"file\":\"" + file + "\"}\n");
            EXPECT_TRUE(answer.contains(u"不是规则文件，不能替换"_s)) << answer.toStdString();
        }
    }
    EXPECT_EQ(m_cli.Folder().ReadFile(u"note.txt"_s), note);
    EXPECT_EQ(m_cli.Folder().ReadFile(u"project\\project.ktqd"_s), ini);
}

/// This process holds the rule file, as a program does in the middle of a save.
class HeldRuleFile : public TwoPrograms
{
protected:
    HeldRuleFile()
    {
        m_held.emplace(embedded::ProjectFolder(m_cli.Folder().Native(u"project"_s)),
                       CStringArray{m_cli.Folder().Path(Cli::RuleFile())});
        m_mark = QDir(MarkFolder()).filePath(Marks().value(0));
    }

    test::Outcome SaveNow()
    {
        m_cli.SetVariable(u"KTQDDE_LOCK_WAIT"_s, u"0"_s);
        return m_cli.Batch(AddRule(Water) + Save);
    }

    std::optional<embedded::RuleFileLock> m_held;
    QString m_mark;
};

TEST_F(HeldRuleFile, EveryProgramThatWritesIsRefusedAndSaysWhoHoldsIt)
{
    m_cli.SetVariable(u"KTQDDE_LOCK_WAIT"_s, u"0"_s);
    const QString id =
        embedded::History(embedded::ProjectFolder(m_cli.Folder().Native(u"project"_s))).ListAll().value(0).id;
    for (const QStringList& words : QList<QStringList>{{u"batch"_s, u"-"_s},
                                                       {u"new"_s, u"other"_s},
                                                       {u"save-as"_s, u"other"_s},
                                                       {u"load"_s, u"DefaultConfig"_s},
                                                       {u"refresh"_s, u"DefaultConfig"_s},
                                                       {u"write-head"_s, u"DefaultConfig"_s},
                                                       {u"history"_s, u"restore"_s, id}}) {
        const test::Outcome outcome = m_cli.RunInProject(words);
        EXPECT_EQ(outcome.status, 1) << words[0].toStdString();
        EXPECT_TRUE(outcome.Err().contains(u"（进程 %1，机器 "_s.arg(QCoreApplication::applicationPid())))
            << words[0].toStdString() << outcome.err.toStdString();
    }
    EXPECT_EQ(Content(), m_first);
    EXPECT_EQ(m_cli.RunInProject({u"show"_s}).status, 0) << "reading needs no lock";
}

TEST_F(HeldRuleFile, ProgramWaitsWithAWordUntilItIsFree)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"KTQDDE_LOCK_WAIT"_s, u"3600"_s);
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(m_cli.Folder().Native({}));
    process.start(QStringLiteral(KTQDDE_PROGRAM),
                  {u"--project"_s, u"project"_s, u"batch"_s, Water.name + u".jsonl"_s});
    QByteArray word;
    test::WaitFor(u"a word"_s, [&] {
        process.waitForReadyRead(10);
        word += process.readAllStandardError();
        return word.contains("等它放开");
    });
    EXPECT_EQ(Content(), m_first);
    m_held.reset();
    test::WaitForEnd(process);
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_EQ(RulesOf(Content(), Water), 1 + Edits);
}

TEST_F(HeldRuleFile, MarkOfAProgramThatHasDiedIsTakenOver)
{
    QFile mark(m_mark);
    ASSERT_TRUE(mark.open(QIODevice::ReadOnly));
    QList<QByteArray> lines = mark.readAll().split('\n');
    mark.close();
    m_held.reset();
    QProcess dead;
    dead.start(QStringLiteral(KTQDDE_PROGRAM), {u"--version"_s});
    ASSERT_TRUE(dead.waitForStarted());
    lines[0] = QByteArray::number(dead.processId());
    test::WaitForEnd(dead);
    ASSERT_TRUE(mark.open(QIODevice::WriteOnly));
    mark.write(lines.join('\n'));
    mark.close();
    EXPECT_EQ(SaveNow().status, 0);
    EXPECT_TRUE(Marks().isEmpty());
}

TEST_F(HeldRuleFile, MarkThatNobodyHasSignedIsTakenOverWhenItIsOld)
{
    m_held.reset();
    QFile mark(m_mark);
    const auto saveWithNewMark = [&] {
        mark.close();
        EXPECT_TRUE(mark.open(QIODevice::WriteOnly));
        EXPECT_TRUE(mark.setFileTime(QDateTime::currentDateTime(), QFile::FileModificationTime));
        return SaveNow().status;
    };
    // On a machine that stands still for a minute in between the mark is old.
    int status = saveWithNewMark();
    if (status == 0) status = saveWithNewMark();
    EXPECT_EQ(status, 1) << "its program may be about to sign";
    ASSERT_TRUE(mark.setFileTime(QDateTime::currentDateTime().addSecs(-120), QFile::FileModificationTime));
    mark.close();
    EXPECT_EQ(SaveNow().status, 0);
}
