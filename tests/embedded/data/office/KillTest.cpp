#include "embedded/OfficeDatabase.h"
#include "embedded/PublisherContent.h"
#include "embedded/data/office/PublishedConfigurations.h"
#include "support/Kills.h"
#include "support/Patience.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;
using embedded::Office;
using embedded::PublishedConfigurations;
using test::TestOffice;

namespace {

/// Some publications long.
constexpr int LongestRun = 150; // ms
/// A little longer than it takes to create an office.
constexpr int LongestCreation = 700; // ms
const CString PublishedName = u"配置"_s;

/// The number behind the last line that begins with a word; 0 when there is none.
int LastOf(const QByteArray& output, const QByteArray& word)
{
    int last = 0;
    for (const QByteArray& line : output.split('\n')) {
        if (line.startsWith(word + ' ')) last = line.mid(word.size() + 1).toInt();
    }
    return last;
}

/// A program that publishes without end.
class Publisher
{
public:
    explicit Publisher(int base)
    {
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.start(QString::fromUtf8(KTQDDE_PUBLISHER),
                        {u"publish"_s, TestOffice::Keeper(), PublishedName, QString::number(base)});
        test::WaitFor(u"a publication"_s, [this] { return Output().contains("asked") || HasEnded(); });
    }

    const QByteArray& Output()
    {
        m_process.waitForReadyRead(0);
        return m_output += m_process.readAll();
    }
    bool HasEnded() const { return m_process.state() == QProcess::NotRunning; }
    void Kill() { test::Kill(m_process); }
    int CodeAtItsEnd()
    {
        test::WaitForEnd(m_process);
        return m_process.exitCode();
    }

private:
    QProcess m_process;
    QByteArray m_output;
};

class Kills : public ::testing::Test
{
protected:
    /// What is there after a kill: every version that was told to be taken, and no half one.
    void Check(const QByteArray& output)
    {
        const int asked = LastOf(output, "asked");
        const int taken = LastOf(output, "taken");
        Office connection(TestOffice::Keeper());
        PublishedConfigurations published(connection);
        const auto log = published.Log(PublishedName);
        ASSERT_FALSE(output.contains("refused")) << output.toStdString();
        EXPECT_GE(log.size(), taken) << "a version that was taken is lost";
        EXPECT_LE(log.size(), std::max(asked, m_checked)) << "a version that nobody asked for";
        for (qsizetype i = 0; i < log.size(); ++i) {
            EXPECT_EQ(log[i].number, log.size() - i);
            EXPECT_EQ(log[i].base, log[i].number - 1);
        }
        for (int number = m_checked + 1; number <= log.size(); ++number)
            EXPECT_EQ(published.Content(PublishedName, number), test::ContentOf(number)) << number;
        ++m_kills;
        m_inPublication += asked > taken ? 1 : 0;
        m_doneUnanswered += log.size() > std::max(taken, m_base) ? 1 : 0;
        m_checked = static_cast<int>(log.size());
        m_base = std::max(taken, m_base); // sent again what was not answered
    }
    void Tell() const
    {
        std::printf("[   KILLS  ] %d: %d while a publication was under way, %d done and not answered\n",
                    m_kills, m_inPublication, m_doneUnanswered);
    }

    TestOffice office;
    QRandomGenerator moments = test::MomentsOfRun();
    int m_base = 0;    ///< the last version whose publication was answered
    int m_checked = 0; ///< the last version that was looked at
    int m_kills = 0;
    int m_inPublication = 0;
    int m_doneUnanswered = 0;
};

} // namespace

TEST_F(Kills, OfAPublishingProgramLeaveEveryVersionWholeAndLoseNone)
{
    const int kills = test::KillsOfRun();
    while (m_kills < kills && !HasFailure()) {
        Publisher publisher(m_base);
        test::PassTime(moments, LongestRun);
        publisher.Kill();
        office.WaitForDead();
        Check(publisher.Output());
    }
    Tell();
}

TEST_F(Kills, OfTheServerLeaveEveryVersionWholeAndLoseNone)
{
    const int kills = test::KillsOfRun();
    while (m_kills < kills && !HasFailure()) {
        Publisher publisher(m_base);
        test::PassTime(moments, LongestRun);
        test::SharedServer().Kill();
        EXPECT_EQ(publisher.CodeAtItsEnd(), 2) << publisher.Output().toStdString();
        test::SharedServer().StartAgain();
        Check(publisher.Output());
    }
    Tell();
}

TEST(KillsOfCreation, LeaveAWholeOfficeOrNone)
{
    QRandomGenerator moments = test::MomentsOfRun();
    int whole = 0;
    const int kills = test::KillsOfRun();
    for (int kill = 0; kill < kills && !testing::Test::HasFailure(); ++kill) {
        const test::OfficeDatabase database;
        QProcess creator;
        creator.start(QString::fromUtf8(KTQDDE_PUBLISHER),
                      {u"create"_s, test::OfficeDatabase::Administrator()});
        test::WaitFor(u"a creation"_s,
                      [&] { return creator.waitForReadyRead(1) || creator.state() == QProcess::NotRunning; });
        test::PassTime(moments, LongestCreation);
        test::Kill(creator);
        database.WaitForDead();
        const bool wasCreated = Office::Status(test::OfficeDatabase::Administrator()).schema != 0;
        EXPECT_TRUE(wasCreated || !creator.readAll().contains("created"));
        if (wasCreated) {
            ++whole;
        } else {
            EXPECT_EQ(database.Ask(u"SELECT count(*) FROM pg_roles WHERE rolname LIKE '%1\\_%'"_s.arg(
                          database.Name())),
                      u"0"_s);
            Office::Create(test::OfficeDatabase::Administrator());
        }
        EXPECT_EQ(Office(test::OfficeDatabase::Administrator()).Right(), embedded::OfficeRight::Keeper);
    }
    std::printf("[   KILLS  ] %d of creations: %d were done\n", kills, whole);
}
