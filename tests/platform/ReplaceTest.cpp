#include "platform/Files.h"

#include "platform/Paths.h"
#include "support/FaultyFileSystem.h"
#include "support/TempFolder.h"

#include <QtCore/QFile>

#include <gtest/gtest.h>

#include <filesystem>

#if !defined(_WIN32)
#include <csignal>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;
using platform::FileError;
using platform::FileKind;
using platform::Files;

namespace {

std::filesystem::path NativeOf(const test::TempFolder& folder, const CString& name)
{
    return folder.Native(name).toStdU16String();
}

TEST(Replace, CreatesOrReplacesAndLeavesNothingBeside)
{
    const test::TempFolder folder;
    const CString path = folder.Path(u"表.csv"_s);
    for (const QByteArray& bytes : {QByteArray("first"), QByteArray("second, longer"), QByteArray()}) {
        Files().Replace(path, bytes);
        EXPECT_EQ(folder.ReadFile(u"表.csv"_s), bytes);
        EXPECT_EQ(folder.FileNames(), CStringArray{u"表.csv"_s});
    }
}

TEST(Replace, EveryFaultLeavesTheOldFileOrNone)
{
    const test::TempFolder folder;
    using enum test::Fault;
    for (const test::Fault fault : {RefuseOpen, NoRoom, Write, Resize, Sync})
        for (int point = 0; point < 4; ++point) {
            folder.WriteFile(u"a"_s, "old");
            test::FaultyFileSystem faulty;
            faulty.Inject(fault);
            if (fault == Write) faulty.FailAfter(5);
            faulty.OnlyAt(point);
            try {
                Files().Replace(folder.Path(u"a"_s), "the new content");
                EXPECT_EQ(folder.ReadFile(u"a"_s), "the new content");
            } catch (const FileError&) {
                EXPECT_EQ(folder.ReadFile(u"a"_s), "old");
            }
            EXPECT_EQ(folder.FileNames(), CStringArray{u"a"_s});
            faulty.Heal();
            faulty.Inject(fault);
            if (fault == Write) faulty.FailAfter(5);
            EXPECT_THROW(Files().Replace(folder.Path(u"new"_s), "the new content"), FileError);
            EXPECT_EQ(folder.FileNames(), CStringArray{u"a"_s});
        }
}

#if !defined(_WIN32)
TEST(Replace, LinkStaysALinkAndItsTargetIsWritten)
{
    const test::TempFolder folder;
    folder.MakeFolder(u"elsewhere"_s);
    folder.WriteFile(u"elsewhere\\target"_s, "old");
    std::filesystem::create_symlink("elsewhere/target", NativeOf(folder, u"inner"_s));
    std::filesystem::create_symlink("inner", NativeOf(folder, u"link"_s));
    Files().Replace(folder.Path(u"link"_s), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(NativeOf(folder, u"link"_s)));
    EXPECT_TRUE(std::filesystem::is_symlink(NativeOf(folder, u"inner"_s)));
    EXPECT_EQ(folder.ReadFile(u"elsewhere\\target"_s), "new");
    EXPECT_EQ(Files().FindFiles(folder.Path(u"elsewhere"_s), {}), CStringArray{u"target"_s});
}

TEST(Replace, LinkThatLeadsNowhereMakesItsTarget)
{
    const test::TempFolder folder;
    std::filesystem::create_symlink("target", NativeOf(folder, u"link"_s));
    EXPECT_EQ(Files().KindOf(folder.Path(u"link"_s)), FileKind::Missing);
    EXPECT_EQ(Files().ThroughLinks(folder.Path(u"link"_s)), folder.Path(u"target"_s));
    Files().Replace(folder.Path(u"link"_s), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(NativeOf(folder, u"link"_s)));
    EXPECT_EQ(folder.ReadFile(u"target"_s), "new");
}

TEST(WriteInPlace, LinkThatLeadsNowhereIsLeftWhenItsTargetCannotBeWritten)
{
    const test::TempFolder folder;
    std::filesystem::create_symlink("target", NativeOf(folder, u"link"_s));
    test::FaultyFileSystem faulty;
    faulty.FailAfter(1);
    EXPECT_THROW(Files().WriteInPlace(folder.Path(u"link"_s), "new"), FileError);
    EXPECT_TRUE(std::filesystem::is_symlink(NativeOf(folder, u"link"_s)));
    EXPECT_FALSE(folder.Exists(u"target"_s));
}

TEST(Replace, LinksInARingAreRefused)
{
    const test::TempFolder folder;
    std::filesystem::create_symlink("b", NativeOf(folder, u"a"_s));
    std::filesystem::create_symlink("a", NativeOf(folder, u"b"_s));
    EXPECT_THROW(Files().Replace(folder.Path(u"a"_s), "new"), FileError);
    EXPECT_TRUE(std::filesystem::is_symlink(NativeOf(folder, u"a"_s)));
}

TEST(Replace, ModeAndOwnerStay)
{
    const test::TempFolder folder;
    folder.WriteFile(u"a"_s, "old");
    const QByteArray name = QFile::encodeName(folder.Native(u"a"_s));
    ASSERT_EQ(chmod(name.constData(), 0600), 0);
    struct stat before = {};
    struct stat after = {};
    ASSERT_EQ(stat(name.constData(), &before), 0);
    Files().Replace(folder.Path(u"a"_s), "new");
    ASSERT_EQ(stat(name.constData(), &after), 0);
    EXPECT_EQ(folder.ReadFile(u"a"_s), "new");
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
}

TEST(Replace, OtherNamesOfAFileKeepTheirFile)
{
    const test::TempFolder folder;
    folder.WriteFile(u"a"_s, "old");
    std::filesystem::create_hard_link(NativeOf(folder, u"a"_s), NativeOf(folder, u"b"_s));
    Files().Replace(folder.Path(u"a"_s), "new");
    EXPECT_EQ(folder.ReadFile(u"b"_s), "new");
    EXPECT_EQ(folder.FileNames(), (CStringArray{u"a"_s, u"b"_s}));
}

TEST(Replace, FolderThatTakesNoNewFileStillHasItsFileWritten)
{
    if (test::TempFolder::IgnoresPermissions()) GTEST_SKIP() << "this user may write everything";
    const test::TempFolder folder;
    folder.MakeFolder(u"f"_s);
    folder.WriteFile(u"f\\a"_s, "old");
    const QByteArray name = QFile::encodeName(folder.Native(u"f"_s));
    ASSERT_EQ(chmod(name.constData(), 0500), 0);
    Files().Replace(folder.Path(u"f\\a"_s), "new");
    EXPECT_EQ(chmod(name.constData(), 0700), 0);
    EXPECT_EQ(folder.ReadFile(u"f\\a"_s), "new");
}

TEST(Replace, DeviceIsWrittenAndStaysADevice)
{
    EXPECT_NO_THROW(Files().Replace(u"\\dev\\null"_s, "x"));
    EXPECT_EQ(Files().KindOf(u"\\dev\\null"_s), FileKind::Other);
    EXPECT_FALSE(Files().FindFiles(u"\\dev"_s, u".part"_s).contains(u"null"_s));
}

/// A pipe in the file system, and the end of it that reads, as long as that is open.
class Pipe : public ::testing::Test
{
protected:
    Pipe()
    {
        EXPECT_EQ(mkfifo(m_name.constData(), 0600), 0);
        std::signal(SIGPIPE, SIG_IGN); // as the programs do
    }
    ~Pipe() override
    {
        CloseReader();
        std::signal(SIGPIPE, m_former);
    }

    void OpenReader()
    {
        m_reader = open(m_name.constData(), O_RDONLY | O_NONBLOCK);
        EXPECT_GE(m_reader, 0);
    }
    void CloseReader()
    {
        if (m_reader >= 0) close(std::exchange(m_reader, -1));
    }
    QByteArray ReadAll() const
    {
        char bytes[100];
        const auto count = read(m_reader, bytes, sizeof bytes);
        return count > 0 ? QByteArray(bytes, count) : QByteArray();
    }

    test::TempFolder m_folder;
    CString m_path = m_folder.Path(u"pipe"_s);
    QByteArray m_name = QFile::encodeName(m_folder.Native(u"pipe"_s));
    int m_reader = -1;

private:
    void (*m_former)(int) = std::signal(SIGPIPE, SIG_DFL);
};

TEST_F(Pipe, ThatNobodyReadsIsRefused)
{
    for (const bool inPlace : {true, false}) {
        try {
            inPlace ? Files().WriteInPlace(m_path, "x") : Files().Replace(m_path, "x");
            ADD_FAILURE() << "nobody has got it";
        } catch (const FileError& error) {
            EXPECT_EQ(error.Reason(), u"没有程序在读这个管道"_s);
        }
    }
    EXPECT_EQ(m_folder.FileNames(), CStringArray());
}

TEST_F(Pipe, GivesItsReaderWhatIsWritten)
{
    OpenReader();
    Files().Replace(m_path, "all of it");
    EXPECT_EQ(ReadAll(), "all of it");
    Files().WriteInPlace(m_path, "and more");
    EXPECT_EQ(ReadAll(), "and more");
}

TEST_F(Pipe, WhoseReaderHasGoneIsAnErrorAndNoWait)
{
    OpenReader();
    const auto file = Files().OpenForWriting(m_path);
    file->Write("taken");
    CloseReader();
    EXPECT_THROW(file->Write(QByteArray(1 << 20, 'x')), FileError); // more than a pipe holds
}

TEST(FileRead, DevicesAndPipesAreRefusedWithAReason)
{
    const test::TempFolder folder;
    ASSERT_EQ(mkfifo(QFile::encodeName(folder.Native(u"pipe"_s)).constData(), 0600), 0);
    for (const CString& path : {u"\\dev\\zero"_s, folder.Path(u"pipe"_s)}) {
        CString reason;
        EXPECT_EQ(Files().Read(path, &reason), std::nullopt);
        EXPECT_TRUE(reason.contains(u"普通文件"_s)) << reason.toStdString();
        EXPECT_EQ(Files().ReadHead(path, 4), std::nullopt);
        EXPECT_EQ(Files().KindOf(path), FileKind::Other);
    }
}
#endif

TEST(FileKind, IsToldOfWhatStandsThere)
{
    const test::TempFolder folder;
    EXPECT_EQ(Files().KindOf(folder.WriteFile(u"a"_s, "x")), FileKind::File);
    EXPECT_EQ(Files().KindOf(folder.Root()), FileKind::Folder);
    EXPECT_EQ(Files().KindOf(folder.Path(u"none"_s)), FileKind::Missing);
}

} // namespace
