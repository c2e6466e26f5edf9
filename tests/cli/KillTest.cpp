#include "cli/CliTesting.h"
#include "embedded/data/History.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QRandomGenerator>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <limits>

using namespace Qt::StringLiterals;
using test::Cli;

namespace {

constexpr int Saves = 4;
constexpr int FirstRules = 1500;
constexpr quint32 Seed = 20240607;
const QByteArray Place = R"("path":{"category":"给排水\\管道\\给水管")";

/// Adds a rule and saves, `Saves` times.
QByteArray Script(int saves)
{
    QByteArray script;
    for (int save = 0; save < saves; ++save)
        script += "{\"op\":\"AddConfig\"," + Place + "}}\n{\"op\":\"Save\"}\n";
    return script;
}

/// What the kills hit.
struct Tally
{
    int kills = 0;
    int inSave = 0; ///< a save was asked for and not yet answered
    int torn = 0;   ///< the file was neither of the states before and after a save
};

/// A project with a rule file that takes a while to write, a program that adds a rule and saves several
/// times, and every state that it saves. The program prints a line for each rule added and for each save
/// done.
class Killing : public testing::Test
{
protected:
    Killing() : m_cli(u"bill"_s)
    {
        QByteArray script;
        for (int rule = 0; rule < FirstRules; ++rule)
            script += "{\"op\":\"AddConfig\"," + Place + "}}\n";
        EXPECT_EQ(m_cli.Batch(script + "{\"op\":\"Save\"}\n").status, 0);
        m_states.append(Content());
    }

    /// Starts the program for that many saves.
    virtual void Start(QProcess& process, int saves) const = 0;

    void LearnStates()
    {
        for (int saves = 1; saves <= Saves; ++saves) {
            Reset();
            QProcess process;
            Start(process, saves);
            process.waitForFinished();
            ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
            m_states.append(Content());
        }
    }

    QByteArray Content() const { return m_cli.Folder().ReadFile(Cli::RuleFile()); }
    void Reset() const { m_cli.Folder().WriteFile(Cli::RuleFile(), m_states.first()); }

    /// How long the program takes, in milliseconds: the shortest of some runs, so that most kills meet it
    /// alive.
    int Duration() const
    {
        qint64 shortest = std::numeric_limits<int>::max();
        for (int run = 0; run < 5; ++run) {
            Reset();
            QElapsedTimer timer;
            QProcess process;
            timer.start();
            Start(process, Saves);
            process.waitForFinished();
            shortest = std::min(shortest, timer.elapsed());
        }
        return static_cast<int>(shortest);
    }

    /// Starts the program, kills it after a while and looks at what is left.
    void KillAfter(int milliseconds, Tally& tally) const
    {
        Reset();
        QProcess process;
        Start(process, Saves);
        process.waitForFinished(milliseconds);
        process.kill();
        process.waitForFinished();
        if (process.exitStatus() != QProcess::CrashExit) return;
        ++tally.kills;
        const auto answers = process.readAllStandardOutput().count('\n');
        // What has no answer behind that of an addition is a save.
        if (answers > 0 && answers < 2 * Saves && answers % 2 == 1) ++tally.inSave;
        Check(tally, answers / 2);
    }

    /// `saved` saves had been answered when the program was killed.
    void Check(Tally& tally, qsizetype saved) const
    {
        embedded::History history{embedded::ProjectFolder(m_cli.Folder().Native(u"project"_s))};
        const auto copies = history.List(m_cli.Folder().Path(Cli::RuleFile()));
        if (copies.isEmpty() && Content() == m_states.first()) return; // killed before it began
        ASSERT_FALSE(copies.isEmpty());
        EXPECT_TRUE(m_states.contains(history.Read(copies.first()))) << "a copy is no state of the file";
        if (m_states.contains(Content())) {
            EXPECT_GE(m_states.indexOf(Content()), saved) << "a save that was answered is not in the file";
            return;
        }
        ++tally.torn;
        const test::Outcome outcome = m_cli.RunInProject({u"history"_s, u"restore"_s, copies.first().id});
        EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
        EXPECT_TRUE(m_states.contains(Content())) << "the history did not give the file back";
        EXPECT_EQ(m_cli.RunInProject({u"show"_s}).status, 0);
        // What was restored over is kept, too; the next look is at copies of whole states only.
        const auto replaced = history.List(copies.first().path).first();
        EXPECT_FALSE(m_states.contains(history.Read(replaced)));
        EXPECT_TRUE(history.Forget(replaced));
    }

    void KillAtRandomMoments(int usual);

    Cli m_cli;
    QList<QByteArray> m_states;
};

void Killing::KillAtRandomMoments(int usual)
{
    ASSERT_NO_FATAL_FAILURE(LearnStates());
    const int asked = qEnvironmentVariableIntValue("KTQDDE_KILLS");
    const int kills = asked > 0 ? asked : usual;
    const int duration = Duration();
    QRandomGenerator random(Seed);
    Tally tally;
    for (int run = 0; tally.kills < kills && run < 3 * kills && !HasFailure(); ++run)
        KillAfter(random.bounded(duration + 1), tally);
    EXPECT_GT(tally.kills, 0);
    std::printf("[   KILLS  ] %d in runs of %d ms: %d while a save was under way, %d left a torn file\n",
                tally.kills, duration, tally.inSave, tally.torn);
}

class KillingABatch : public Killing
{
protected:
    void Start(QProcess& process, int saves) const override
    {
        m_cli.Folder().WriteFile(u"script.jsonl"_s, Script(saves));
        process.setWorkingDirectory(m_cli.Folder().Native({}));
        process.start(QStringLiteral(KTQDDE_PROGRAM),
                      {u"--project"_s, u"project"_s, u"batch"_s, u"script.jsonl"_s});
        ASSERT_TRUE(process.waitForStarted());
    }
};

class KillingADialog : public Killing
{
protected:
    void Start(QProcess& process, int saves) const override
    {
        process.start(QStringLiteral(KTQDDE_DIALOG_SAVER),
                      {m_cli.Folder().Native(u"project"_s), CString::number(saves)});
        ASSERT_TRUE(process.waitForStarted());
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
