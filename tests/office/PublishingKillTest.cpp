#include "embedded/data/office/PublishedConfigurations.h"
#include "office/TwoProjects.h"
#include "support/Kills.h"
#include "support/Patience.h"

#include <QtCore/QProcess>

#include <cstdio>

using namespace Qt::StringLiterals;
using namespace test; // NOLINT(google-build-using-namespace): all of this is about them

namespace {

/// Some publications long.
constexpr int LongestRun = 250; // ms

/// The numbers in the last line that begins with a word; nothing when there is none.
QList<int> LastOf(const QByteArray& output, const QByteArray& word)
{
    QList<int> last;
    for (const QByteArray& line : output.split('\n')) {
        const QList<QByteArray> parts = line.split(' ');
        if (parts[0] != word) continue;
        last.clear();
        for (const QByteArray& part : parts.sliced(1))
            last.append(part.toInt());
    }
    return last;
}

/// A program that edits the same rule of a project's file again and again, and publishes it each time.
class Editor
{
public:
    Editor(const QString& folder, int first)
    {
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.start(QString::fromUtf8(KTQDDE_OFFICE_WORKER),
                        {u"edit"_s, folder, Configuration, QString::number(first)});
        WaitFor(u"an edit"_s, [this] { return Output().contains("edited") || HasEnded(); });
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
        WaitForEnd(m_process);
        return m_process.exitCode();
    }

private:
    QProcess m_process;
    QByteArray m_output;
};

class PublishingKills : public TwoProjects
{
protected:
    /// Nothing that was told to be published is lost, no version is half, and nobody was in conflict with
    /// himself.
    void Check(const QByteArray& output)
    {
        ASSERT_FALSE(output.contains("conflict") || output.contains("error")) << output.toStdString();
        const auto edited = LastOf(output, "edited");
        const auto published = LastOf(output, "published");
        if (!edited.isEmpty()) m_edited = edited[0];
        m_wang.Reopen();
        const auto log = m_wang.Files().Log(Configuration);
        for (qsizetype i = 0; i < log.size(); ++i)
            EXPECT_EQ(log[i].number, log.size() - i);
        if (!published.isEmpty()) {
            ASSERT_LE(published[0], log.size()) << "a version that was published is lost";
            EXPECT_TRUE(ContentIs(published[0], published[1])) << output.toStdString();
        }
        const int told = published.isEmpty() ? m_last : published[0];
        m_unheard += log.size() > std::max(told, m_last) ? 1 : 0;
        m_last = static_cast<int>(log.size());
        ++m_kills;
    }
    bool ContentIs(int version, int number)
    {
        return m_wang.Files()
            .Content(Configuration, version)
            .contains("长度" + QByteArray::number(number) + '"');
    }
    /// In the end all is published, the last edit last.
    void Finish()
    {
        std::printf("[   KILLS  ] %d: %d publications done and not answered, %d versions\n", m_kills,
                    m_unheard, m_last);
        if (HasFailure()) return;
        m_li.Reopen();
        for (const auto& sent : m_li.Files().SendWaiting())
            EXPECT_TRUE(sent.end.IsDone());
        EXPECT_TRUE(m_li.Publish().IsDone());
        EXPECT_TRUE(ContentIs(m_li.Files().LastVersion(Configuration), m_edited));
        EXPECT_EQ(m_li.Read(), m_li.Last());
    }

    QRandomGenerator m_moments = MomentsOfRun();
    int m_edited = 0;
    int m_last = 1;
    int m_kills = 0;
    int m_unheard = 0;
};

} // namespace

TEST_F(PublishingKills, OfTheProgramLoseNothingAndLeaveNoConflictWithOneself)
{
    const int kills = KillsOfRun();
    while (m_kills < kills && !HasFailure()) {
        const QString before = m_setting.Database().Clients();
        Editor editor(m_li.Folder(), m_edited + 1);
        PassTime(m_moments, LongestRun);
        editor.Kill();
        m_setting.Database().WaitForDead(before);
        Check(editor.Output());
    }
    Finish();
}

TEST_F(PublishingKills, OfTheServerLoseNothingAndLeaveNoConflictWithOneself)
{
    const int kills = KillsOfRun();
    while (m_kills < kills && !HasFailure()) {
        Editor editor(m_li.Folder(), m_edited + 1);
        PassTime(m_moments, LongestRun);
        SharedServer().Kill();
        EXPECT_EQ(editor.CodeAtItsEnd(), 2) << editor.Output().toStdString();
        SharedServer().StartAgain();
        Check(editor.Output());
    }
    Finish();
}
