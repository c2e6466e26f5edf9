#include "cli/commands/ExportCommand.h"
#include "cli/commands/InitCommand.h"
#include "cli/reading/Failure.h"
#include "embedded/TestProject.h"
#include "platform/Files.h"

#include <gtest/gtest.h>

#include <csignal>

using namespace Qt::StringLiterals;
using test::TestProject;

namespace {

/// Interrupts the program once, when a folder is made or the project file is looked at.
class InterruptingFiles : public platform::FileSystemProxy
{
public:
    InterruptingFiles() : FileSystemProxy(platform::Files()), m_installed(*this) {}

    bool CreateFolder(const CString& path) override
    {
        InterruptOnce();
        return FileSystemProxy::CreateFolder(path);
    }
    std::optional<QByteArray> ReadHead(const CString& path, qint64 length) override
    {
        if (!m_waitsForFolder) InterruptOnce();
        return FileSystemProxy::ReadHead(path, length);
    }
    /// Interrupts only when a folder is made.
    void WaitForFolder() { m_waitsForFolder = true; }

private:
    void InterruptOnce()
    {
        if (!m_hasCome) std::raise(SIGINT);
        m_hasCome = true;
    }

    bool m_waitsForFolder = false;
    bool m_hasCome = false;
    platform::ScopedFileSystem m_installed;
};

/// The reason for which a command refuses.
CString RefusalOf(const cli::Command& command, const CStringArray& words)
{
    const CArray<cli::Option> options =
        command.Info().options + CArray<cli::Option>{{u"project"_s, u"DIR"_s, {}, {}}};
    try {
        command.Run(cli::Arguments(words, options));
    } catch (const cli::Refusal& refusal) {
        return CString::fromUtf8(refusal.what());
    }
    return u"no refusal"_s;
}

} // namespace

TEST(InterruptedInit, SaysSoAndLeavesNothingBehind)
{
    const TestProject project;
    InterruptingFiles files;
    files.WaitForFolder();
    EXPECT_EQ(RefusalOf(cli::InitCommand(), {project.Folder()}), u"已取消，什么也没有建立"_s);
    EXPECT_FALSE(project.Temp().Exists(TestProject::Name()));
}

TEST(InterruptedExport, SaysSoAndLeavesTheOldFile)
{
    const TestProject project;
    project.Put();
    project.Temp().WriteFile(u"out.csv"_s, "old");
    const InterruptingFiles files;
    EXPECT_EQ(RefusalOf(cli::ExportCommand(), {u"--project"_s, project.Folder(), u"bill"_s,
                                               project.Temp().Native(u"out.csv"_s), u"--force"_s}),
              u"已取消，没有写出"_s);
    EXPECT_EQ(project.Temp().ReadFile(u"out.csv"_s), "old");
}
