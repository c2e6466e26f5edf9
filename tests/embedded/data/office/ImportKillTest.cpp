#include "embedded/OfficeFixture.h"
#include "embedded/data/exchange/TableImport.h"
#include "support/Kills.h"
#include "support/Patience.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QProcess>

#include <iostream>

using namespace Qt::StringLiterals;
using embedded::TableKind;
using test::TestProject;

namespace {

/// A project whose bill table goes back and forth between two states, each by the import of a file.
class ImportKill : public test::OfficeFixture
{
protected:
    ImportKill()
    {
        m_other.Create(test::On(Administrator()));
        m_states[0] = Exported(m_project);
        m_states[1] = m_states[0].section(u'\n', 0, 0) + u'\n';
        for (int row = 0; row < Rows; ++row)
            m_states[1] +=
                u"%1,项目%2,m,1,否,,%3,自有章\r\n"_s.arg(900000000 + row).arg(row % 7).arg(row % 9);
        for (int state = 0; state < 2; ++state)
            m_project.Temp().WriteFile(u"%1.csv"_s.arg(state), m_states[state].toUtf8());
        QElapsedTimer timer;
        timer.start();
        Begin(1);
        test::WaitForEnd(m_program);
        EXPECT_EQ(m_program.exitCode(), 0) << m_program.readAllStandardError().toStdString();
        m_duration = static_cast<int>(timer.elapsed());
        m_states[1] = Exported(m_project);
    }

    static CString Exported(const TestProject& project)
    {
        return embedded::ExportText(project.Folder(), TableKind::Bill);
    }
    /// Starts a program that imports a state.
    void Begin(int state)
    {
        m_program.start(QString::fromUtf8(KTQDDE_OPENER),
                        {u"import"_s, m_project.Folder(), m_project.Temp().Native(u"%1.csv"_s.arg(state))});
        ASSERT_TRUE(m_program.waitForStarted(-1));
    }
    /// Waits for some part of the time that an import takes.
    void WaitSome() { test::PassTime(m_moments, m_duration * 5 / 4 + 1); }
    /// The state of the office, for whoever asks; -1 for something in between.
    int State() const
    {
        const CString found = Exported(m_other);
        EXPECT_EQ(Exported(m_project), found) << "a copy that is brought up to date is the office's state";
        if (found == m_states[0]) return 0;
        return found == m_states[1] ? 1 : -1;
    }

    static constexpr int Rows = 3000;

    QRandomGenerator m_moments = test::MomentsOfRun();
    TestProject m_other;
    CString m_states[2];
    int m_duration = 0;
    QProcess m_program;
};

} // namespace

TEST_F(ImportKill, OfTheProgramAtAnyMomentLeavesTheOldOrTheNewState)
{
    int stored = 0;
    int before = State();
    ASSERT_EQ(before, 1);
    for (int kill = 0; kill < test::KillsOfRun(); ++kill) {
        Begin(1 - before);
        WaitSome();
        test::Kill(m_program);
        const int state = State();
        ASSERT_GE(state, 0) << "kill " << kill;
        stored += state != before ? 1 : 0;
        before = state;
    }
    std::cout << stored << " of " << test::KillsOfRun() << " imports were stored\n";
}

TEST_F(ImportKill, OfTheServerAtAnyMomentLeavesTheOldOrTheNewStateAndNoFalseReport)
{
    int stored = 0;
    int before = State();
    ASSERT_EQ(before, 1);
    for (int kill = 0; kill < test::KillsOfRun(); ++kill) {
        const int wanted = 1 - before;
        Begin(wanted);
        WaitSome();
        test::SharedServer().Kill();
        test::WaitForEnd(m_program);
        test::SharedServer().StartAgain();
        const int state = State();
        ASSERT_GE(state, 0) << "kill " << kill;
        EXPECT_EQ(m_program.exitStatus(), QProcess::NormalExit);
        if (m_program.exitCode() == 0) {
            EXPECT_EQ(state, wanted) << "it was reported as stored";
        } else {
            EXPECT_EQ(m_program.exitCode(), 4) << m_program.readAllStandardError().toStdString();
        }
        stored += state != before ? 1 : 0;
        before = state;
    }
    std::cout << stored << " of " << test::KillsOfRun() << " imports were stored\n";
}
