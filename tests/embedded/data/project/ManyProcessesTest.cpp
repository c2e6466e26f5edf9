#include "embedded/OldProject.h"
#include "platform/Files.h"
#include "support/Patience.h"

#include <QtCore/QProcess>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int Programs = 6;

/// Starts several programs at once that do the same in one folder, and gives their exit codes and messages.
class Crowd
{
public:
    Crowd(const QString& verb, const QString& folder)
    {
        for (int program = 0; program < Programs; ++program) {
            m_programs.push_back(std::make_unique<QProcess>());
            m_programs.back()->setProcessEnvironment(test::PatientEnvironment());
            m_programs.back()->start(QString::fromUtf8(KTQDDE_OPENER), {verb, folder});
        }
        for (const auto& program : m_programs) {
            test::WaitForEnd(*program);
            EXPECT_EQ(program->exitStatus(), QProcess::NormalExit);
            m_messages += QString::fromUtf8(program->readAllStandardError());
        }
    }
    int Ended(int code) const
    {
        int count = 0;
        for (const auto& program : m_programs)
            count += program->exitCode() == code ? 1 : 0;
        return count;
    }
    const QString& Messages() const { return m_messages; }

private:
    std::vector<std::unique_ptr<QProcess>> m_programs;
    QString m_messages;
};

} // namespace

TEST(ManyProcesses, OfSeveralCreatorsOneSucceedsAndTheOthersAreToldSo)
{
    const test::TestProject project;
    const Crowd crowd(u"create"_s, project.Folder());
    EXPECT_EQ(crowd.Ended(0), 1) << crowd.Messages().toStdString();
    EXPECT_EQ(crowd.Ended(1), Programs - 1) << crowd.Messages().toStdString();
    EXPECT_EQ(crowd.Messages().count(u"已有工程"_s), Programs - 1) << crowd.Messages().toStdString();
    EXPECT_NO_THROW(embedded::EmbeddedHost(project.Folder()));
}

TEST(ManyProcesses, AllOpenAProjectWhoseCatalogueHasToBeMadeAnew)
{
    const test::TestProject project;
    project.Put();
    ASSERT_TRUE(platform::RealFileSystem().Remove(project.Path(u"app\\catalogue.db"_s)));
    const Crowd crowd(u"open"_s, project.Folder());
    EXPECT_EQ(crowd.Ended(0), Programs) << crowd.Messages().toStdString();
}

TEST(ManyProcesses, AllOpenAProjectWhoseCatalogueHasToBeRewritten)
{
    const test::TestProject project;
    project.Put();
    test::MakeOld(project);
    const Crowd crowd(u"open"_s, project.Folder());
    EXPECT_EQ(crowd.Ended(0), Programs) << crowd.Messages().toStdString();
    EXPECT_EQ(embedded::EmbeddedHost(project.Folder()).Contents().bills.size(), 3U);
}

TEST(ManyProcesses, ProgramThatIsKilledWhileItRewritesACatalogueLosesNothing)
{
    const test::TestProject project;
    project.Put();
    test::MakeOld(project);
    const CString name = test::TestProject::Below(u"app\\catalogue.db"_s);
    const QByteArray old = project.Temp().ReadFile(name);
    for (int milliseconds = 0; milliseconds < 80; milliseconds += 4) {
        project.Temp().WriteFile(name, old);
        QProcess program;
        program.start(QString::fromUtf8(KTQDDE_OPENER), {u"open"_s, project.Folder()});
        program.waitForFinished(milliseconds);
        test::Kill(program);
        const embedded::EmbeddedHost host(project.Folder());
        ASSERT_EQ(host.Contents().bills.size(), 3U) << milliseconds;
        EXPECT_EQ(host.LibrariesOf(embedded::LibraryRole::Quota).size(), 2) << milliseconds;
    }
}
