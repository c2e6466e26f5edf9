#pragma once

#include "cli/CliTesting.h"
#include "support/Patience.h"
#include "support/StrictXml.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <vector>

namespace test {

/// A specialty of the rule file in which programs meet.
struct MetSpecialty
{
    QString name;
    QByteArray category; ///< as JSON
};

extern const MetSpecialty Water;
extern const MetSpecialty Power;

/// How many rules a program that works on its own adds, each with a save.
inline constexpr int Edits = 3;

/// Lines of a batch.
extern const QByteArray Save;
QByteArray AddRule(const MetSpecialty& specialty);

/// How many rules, without the default ones, a rule file holds in a specialty; -1 when it has none.
int RulesOf(const QByteArray& file, const MetSpecialty& specialty);

/// How many saves a batch has answered ok.
int SavesOf(const QByteArray& output);

/// How often programs are let at the same file; KTQDDE_ROUNDS asks for more.
int Rounds();

/// A project whose rule file has a rule in each of two specialties, and programs that work on it at once.
class TwoProgramsFixture : public testing::Test
{
protected:
    using Process = std::unique_ptr<QProcess>;

    TwoProgramsFixture();

    /// What the rule file holds now.
    QByteArray Content() const { return m_cli.Folder().ReadFile(Cli::RuleFile()); }

    /// Starts a program in the folder that holds the project.
    Process Start(const QString& program, const QStringList& arguments) const;
    /// Adds `Edits` rules of a specialty.
    Process StartBatch(const MetSpecialty& specialty) const;
    /// Adds as many rules of the project's specialty as a batch does.
    Process StartDialog() const;
    /// Adds as many by the workbench's saves of a draft.
    Process StartWorkbench(const MetSpecialty& specialty) const;

    /// Runs the programs that `start` starts, again and again from the same file, and lets `check` look.
    template <typename Start, typename Check>
    void Repeat(const Start& start, const Check& check)
    {
        const int rounds = Rounds();
        for (int round = 0; round < rounds && !HasFailure(); ++round) {
            m_cli.Folder().WriteFile(Cli::RuleFile(), m_first);
            std::vector<Process> processes = start();
            for (const Process& process : processes)
                WaitForEnd(*process);
            const QByteArray file = Content();
            ASSERT_TRUE(IsStrictXml(file)) << "round " << round;
            check(processes, file);
            EXPECT_TRUE(Marks().isEmpty());
        }
        std::printf("[  ROUNDS  ] %d\n", rounds);
    }

    QString MarkFolder() const;
    /// The names of the marks of those who hold rule files.
    QStringList Marks() const;

    Cli m_cli;
    QByteArray m_first; ///< what the rule file holds at first

private:
    void WriteScript(const MetSpecialty& specialty) const;
};

} // namespace test
