#include "cli/CliTesting.h"
#include "embedded/data/history/History.h"
#include "embedded/data/project/ProjectFolder.h"
#include "platform/ProfileFile.h"
#include "support/Patience.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QRandomGenerator>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <limits>

using namespace Qt::StringLiterals;
using test::Cli;

namespace {

constexpr int Rounds = 4;
constexpr int FirstRules = 1500;
constexpr quint32 Seed = 20240607;
const QByteArray Place = R"("path":{"category":"给排水\\管道\\给水管")";

/// Adds a rule and saves, in each round.
QByteArray Script(int rounds)
{
    QByteArray script;
    for (int round = 0; round < rounds; ++round)
        script += "{\"op\":\"AddConfig\"," + Place + "}}\n{\"op\":\"Save\"}\n";
    return script;
}

/// A rule file, and what it holds at first and after each round.
struct RuleFile
{
    CString configuration;
    QList<QByteArray> states;
};

/// What the kills hit.
struct Tally
{
    int kills = 0;
    int inSave = 0; ///< a save was asked for and not yet answered
    int torn = 0;   ///< a file was neither of the states before and after a save
};

/// A project with a rule file that takes a while to write, and a program that works in rounds: in each it
/// adds a rule to every file that is watched and saves it. It prints a line for each rule added and for each
/// save done.
class Killing : public testing::Test
{
protected:
    Killing() : m_cli(u"bill"_s)
    {
        QByteArray script;
        for (int rule = 0; rule < FirstRules; ++rule)
            script += "{\"op\":\"AddConfig\"," + Place + "}}\n";
        EXPECT_EQ(m_cli.Batch(script + "{\"op\":\"Save\"}\n").status, 0);
        m_profile = m_cli.Folder().ReadFile(ProfileName);
        Watch(u"DefaultConfig"_s);
    }

    void Watch(const CString& configuration) { m_files.append({configuration, {Content(configuration)}}); }

    /// Starts the program for that many rounds.
    virtual void Start(QProcess& process, int rounds) const = 0;
    /// How many saves of a file the program has answered.
    virtual qsizetype SavesOf(const CString& configuration, const QByteArray& output) const = 0;

    /// Whether each state has a copy once it is written over, not only the first and the last one.
    virtual bool KeepsEachState() const = 0;

    void LearnStates()
    {
        for (int rounds = 1; rounds <= Rounds; ++rounds) {
            Reset();
            QProcess process;
            Start(process, rounds);
            test::WaitForEnd(process);
            ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
            for (RuleFile& file : m_files)
                file.states.append(Content(file.configuration));
        }
    }

    QByteArray Content(const CString& configuration) const
    {
        return m_cli.Folder().ReadFile(Cli::RuleFile(configuration));
    }

    /// Makes everything what it was at first; the history is empty then.
    void Reset() const
    {
        QDir(m_cli.Folder().Native(u"project\\history"_s)).removeRecursively();
        m_cli.Folder().WriteFile(ProfileName, m_profile);
        for (const RuleFile& file : m_files)
            m_cli.Folder().WriteFile(Cli::RuleFile(file.configuration), file.states.first());
    }

    /// How long the program takes at present, in milliseconds: the shortest of some runs, so that most kills
    /// meet it alive.
    int Duration() const
    {
        qint64 shortest = std::numeric_limits<int>::max();
        for (int run = 0; run < 5; ++run) {
            Reset();
            QElapsedTimer timer;
            QProcess process;
            timer.start();
            Start(process, Rounds);
            test::WaitForEnd(process);
            shortest = std::min(shortest, timer.elapsed());
        }
        return static_cast<int>(shortest);
    }

    /// Starts the program, kills it after a while and looks at what is left. False when it ended before.
    bool KillAfter(int milliseconds, Tally& tally) const
    {
        Reset();
        QProcess process;
        Start(process, Rounds);
        process.waitForFinished(milliseconds);
        test::Kill(process);
        if (process.exitStatus() != QProcess::CrashExit) return false;
        ++tally.kills;
        const QByteArray output = process.readAllStandardOutput();
        // What has no answer behind that of an addition is a save.
        if (output.count('\n') % 2 == 1) ++tally.inSave;
        CheckProfile();
        for (const RuleFile& file : m_files)
            Check(file, SavesOf(file.configuration, output), tally);
        return true;
    }

    void CheckProfile() const
    {
        const platform::ProfileFile profile(m_cli.Folder().Path(ProfileName));
        const CString current =
            profile.Read(u"QdDeConfigInfo"_s, u"ConfigName"_s, m_files.first().configuration, 100);
        EXPECT_TRUE(std::any_of(m_files.begin(), m_files.end(), [&](const RuleFile& file) {
            return file.configuration == current;
        })) << current.toStdString();
    }

    /// `saved` saves of the file had been answered when the program was killed.
    void Check(const RuleFile& file, qsizetype saved, Tally& tally) const
    {
        const embedded::History history{embedded::ProjectFolder(m_cli.Folder().Native(u"project"_s))};
        const auto copies = history.List(m_cli.Folder().Path(Cli::RuleFile(file.configuration)));
        const qsizetype state = file.states.indexOf(Content(file.configuration));
        if (copies.isEmpty()) {
            EXPECT_EQ(state, 0) << "a save kept no copy";
            EXPECT_EQ(saved, 0) << "a save that was answered is not in the file";
            return;
        }
        const qsizetype kept = file.states.indexOf(history.Read(copies.first()));
        ASSERT_GE(kept, 0) << "a copy is no state of the file";
        if (state >= 0) {
            EXPECT_GE(state, saved) << "a save that was answered is not in the file";
            EXPECT_GE(kept, KeepsEachState() ? state - 1 : 0) << "a save kept no copy";
            return;
        }
        ++tally.torn;
        EXPECT_GE(kept, saved) << "a save that was answered is not in the history";
        const test::Outcome restored = m_cli.RunInProject({u"history"_s, u"restore"_s, copies.first().id});
        EXPECT_EQ(restored.status, 0) << restored.err.toStdString();
        EXPECT_EQ(file.states.indexOf(Content(file.configuration)), kept);
        EXPECT_EQ(m_cli.RunInProject({u"show"_s, u"--config"_s, file.configuration}).status, 0);
    }

    void KillAtRandomMoments(int usual);

    const CString ProfileName = u"project\\SysRegedit.ini"_s;
    Cli m_cli;
    QByteArray m_profile;
    QList<RuleFile> m_files;
};

void Killing::KillAtRandomMoments(int usual)
{
    ASSERT_NO_FATAL_FAILURE(LearnStates());
    const int asked = qEnvironmentVariableIntValue("KTQDDE_KILLS");
    const int kills = asked > 0 ? asked : usual;
    int duration = Duration();
    QRandomGenerator random(Seed);
    Tally tally;
    while (tally.kills < kills && !HasFailure()) {
        const int moment = random.bounded(duration + 1);
        // A machine that has become faster meanwhile needs earlier kills.
        if (!KillAfter(moment, tally)) duration = moment;
    }
    std::printf("[   KILLS  ] %d in runs of %d ms: %d while a save was under way, %d left a torn file\n",
                tally.kills, duration, tally.inSave, tally.torn);
}

class KillingABatch : public Killing
{
protected:
    void Start(QProcess& process, int rounds) const override
    {
        m_cli.Folder().WriteFile(u"script.jsonl"_s, Script(rounds));
        process.setWorkingDirectory(m_cli.Folder().Native({}));
        process.start(QStringLiteral(KTQDDE_PROGRAM),
                      {u"--project"_s, u"project"_s, u"batch"_s, u"script.jsonl"_s});
        ASSERT_TRUE(process.waitForStarted(static_cast<int>(test::Patience().count())));
    }

    qsizetype SavesOf(const CString& /*configuration*/, const QByteArray& output) const override
    {
        return output.count('\n') / 2;
    }

    // Its history makes room for the copy of the last state before it keeps that.
    bool KeepsEachState() const override { return false; }
};

class KillingADialog : public Killing
{
protected:
    void Start(QProcess& process, int rounds) const override
    {
        process.start(QStringLiteral(KTQDDE_DIALOG_SAVER),
                      {m_cli.Folder().Native(u"project"_s), CString::number(rounds)});
        ASSERT_TRUE(process.waitForStarted(static_cast<int>(test::Patience().count())));
    }

    qsizetype SavesOf(const CString& configuration, const QByteArray& output) const override
    {
        return output.count("saved " + configuration.toUtf8() + '\n');
    }

    bool KeepsEachState() const override { return true; }
};

/// With a second rule file in the project, which the dialog calls in each round.
class KillingADialogWithTwoFiles : public KillingADialog
{
protected:
    KillingADialogWithTwoFiles()
    {
        QByteArray rules = Content(u"DefaultConfig"_s);
        m_cli.Folder().WriteFile(Cli::RuleFile(u"Other"_s),
                                 rules.replace("<给排水 ", "<!--other--><给排水 "));
        Watch(u"Other"_s);
    }
};

} // namespace

TEST_F(KillingABatch, AtAnyMomentLosesNothingThatTheHistoryCannotGiveBack)
{
    KillAtRandomMoments(40);
}

TEST_F(KillingADialog, AtAnyMomentLosesNothingThatTheHistoryCannotGiveBack)
{
    KillAtRandomMoments(15);
}

TEST_F(KillingADialogWithTwoFiles, AtAnyMomentLosesNothingThatTheHistoryCannotGiveBack)
{
    KillAtRandomMoments(15);
}
