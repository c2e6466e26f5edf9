#include "cli/TwoProgramsFixture.h"

#include <numeric>

using namespace Qt::StringLiterals;
using test::Edits;
using test::Power;
using test::RulesOf;
using test::SavesOf;
using test::Water;

namespace {

int Sum(int sum, const std::unique_ptr<QProcess>& process)
{
    return sum + SavesOf(process->readAllStandardOutput());
}

/// The tests' own, so that what two of them repeat stands once.
class TwoPrograms : public test::TwoProgramsFixture
{
protected:
    /// Repeats an editor that `start` starts on the one specialty beside two batches on the other one:
    /// nothing that anybody saved may be lost.
    template <typename Start>
    void RepeatBesideTwoBatches(const Start& start)
    {
        Repeat(
            [&] {
                std::vector<Process> processes;
                processes.push_back(start());
                processes.push_back(StartBatch(Power));
                processes.push_back(StartBatch(Power));
                return processes;
            },
            [&](const std::vector<Process>& processes, const QByteArray& file) {
                EXPECT_EQ(processes[0]->exitCode(), 0) << processes[0]->readAllStandardError().toStdString();
                EXPECT_EQ(RulesOf(file, Water), 1 + Edits);
                EXPECT_EQ(RulesOf(file, Power),
                          std::accumulate(processes.begin() + 1, processes.end(), 1, Sum));
            });
    }
};

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
    RepeatBesideTwoBatches([&] { return StartDialog(); });
}

TEST_F(TwoPrograms, TheWorkbenchAndTwoBatchesLoseNothing)
{
    RepeatBesideTwoBatches([&] { return StartWorkbench(Water); });
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
