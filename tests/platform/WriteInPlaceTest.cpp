#include "platform/Files.h"

#include "support/FaultyFileSystem.h"
#include "support/TempFolder.h"

#include <QtCore/QFile>

#include <gtest/gtest.h>

#include <filesystem>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;
using platform::FileError;
using platform::Files;
using test::Fault;
using test::FaultyFileSystem;

namespace {

const QByteArray Old = "the old content";
const QByteArray Longer = "the new content, which is longer";
const QByteArray Shorter = "new";

constexpr Fault AllWriteFaults[] = {Fault::RefuseOpen, Fault::NoRoom, Fault::Write, Fault::Resize,
                                    Fault::Sync};

/// The reason with which writing over `path` fails; null when it does not.
CString WriteFailure(const CString& path, const QByteArray& bytes)
{
    try {
        Files().WriteInPlace(path, bytes);
        return {};
    } catch (const FileError& error) {
        EXPECT_EQ(error.Path(), path);
        return error.Reason();
    }
}

TEST(OutputFile, KeepsTheOldBytesUntilTheyAreOverwritten)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a"_s, "12345");
    const auto file = Files().OpenForWriting(path);
    EXPECT_EQ(folder.ReadFile(u"a"_s), "12345");
    EXPECT_EQ(file->Size(), 5);
    file->Write("ab");
    file->Write("c");
    EXPECT_EQ(folder.ReadFile(u"a"_s), "abc45");
}

TEST(OutputFile, CreatesAMissingFile)
{
    const test::TempFolder folder;
    const auto file = Files().OpenForWriting(folder.Path(u"a"_s));
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(file->Size(), 0);
    EXPECT_TRUE(folder.Exists(u"a"_s));
}

TEST(OutputFile, AppendsBehindTheEnd)
{
    const test::TempFolder folder;
    const auto file = Files().OpenForWriting(folder.WriteFile(u"a"_s, "12"));
    file->SeekToEnd();
    file->Write("34");
    EXPECT_EQ(folder.ReadFile(u"a"_s), "1234");
}

TEST(OutputFile, ReservingChangesNeitherLengthNorContent)
{
    const test::TempFolder folder;
    const auto file = Files().OpenForWriting(folder.WriteFile(u"a"_s, "12"));
    file->Reserve(100'000);
    EXPECT_EQ(file->Size(), 2);
    file->Reserve(1);
    file->Reserve(0);
    EXPECT_EQ(folder.ReadFile(u"a"_s), "12");
}

#if defined(__linux__)
TEST(OutputFile, ReservingMoreThanTheFileSystemHoldsRaises)
{
    const test::TempFolder folder;
    const auto file = Files().OpenForWriting(folder.WriteFile(u"a"_s, "12"));
    EXPECT_THROW(file->Reserve(std::numeric_limits<qint64>::max()), FileError);
    EXPECT_EQ(folder.ReadFile(u"a"_s), "12");
}

TEST(OutputFile, FullDiskRaisesAtWriting)
{
    const auto file = Files().OpenForWriting(u"\\dev\\full"_s);
    EXPECT_THROW(file->Write("x"), FileError);
}

TEST(OutputFile, DeviceThatCannotSyncIsFine)
{
    const auto file = Files().OpenForWriting(u"\\dev\\null"_s);
    EXPECT_NO_THROW(file->Reserve(10));
    EXPECT_NO_THROW(file->Write("x"));
    EXPECT_NO_THROW(file->Sync());
}
#endif

TEST(OutputFile, ResizeCutsAndExtends)
{
    const test::TempFolder folder;
    const auto file = Files().OpenForWriting(folder.WriteFile(u"a"_s, "12345"));
    file->Resize(2);
    EXPECT_EQ(folder.ReadFile(u"a"_s), "12");
    file->Resize(3);
    EXPECT_EQ(folder.ReadFile(u"a"_s), QByteArray("12\0", 3));
}

TEST(WriteInPlace, CreatesAFile)
{
    const test::TempFolder folder;
    Files().WriteInPlace(folder.Path(u"配置.xml"_s), "content");
    EXPECT_EQ(folder.ReadFile(u"配置.xml"_s), "content");
}

TEST(WriteInPlace, ReplacesLongerAndShorterContent)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a"_s, Old);
    for (const QByteArray& bytes : {Longer, Shorter, QByteArray(), Old}) {
        Files().WriteInPlace(path, bytes);
        EXPECT_EQ(folder.ReadFile(u"a"_s), bytes);
    }
}

TEST(WriteInPlace, LinksStayLinksToTheSameFile)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a"_s, Old);
    std::filesystem::create_hard_link(folder.Native(u"a"_s).toStdU16String(),
                                      folder.Native(u"b"_s).toStdU16String());
    Files().WriteInPlace(path, Longer);
    EXPECT_EQ(folder.ReadFile(u"b"_s), Longer);
}

TEST(WriteInPlace, KeepsPermissionsAndLeavesNoOtherFile)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a"_s, Old);
    const QFile::Permissions special =
        QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
    ASSERT_TRUE(QFile::setPermissions(folder.Native(u"a"_s), special));
    const QFile::Permissions before = QFile::permissions(folder.Native(u"a"_s));
    Files().WriteInPlace(path, Longer);
    EXPECT_EQ(QFile::permissions(folder.Native(u"a"_s)), before);
    EXPECT_EQ(Files().FindFiles(folder.Root(), CString()), CStringArray{u"a"_s});
}

TEST(WriteInPlace, FolderMissingPathAndEmptyNameRaise)
{
    const test::TempFolder folder;
    EXPECT_FALSE(WriteFailure(folder.Root(), "x").isEmpty());
    EXPECT_FALSE(WriteFailure(folder.Path(u"missing\\a"_s), "x").isEmpty());
    EXPECT_FALSE(WriteFailure(CString(), "x").isEmpty());
    EXPECT_FALSE(WriteFailure(u"a\0b"_s, "x").isEmpty());
}

TEST(WriteInPlace, ReadOnlyFileRaisesAndKeepsItsContent)
{
    if (test::TempFolder::IgnoresPermissions()) GTEST_SKIP() << "this user may write everything";
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a"_s, Old);
    folder.SetReadOnly(u"a"_s, true);
    EXPECT_FALSE(WriteFailure(path, Longer).isEmpty());
    EXPECT_EQ(folder.ReadFile(u"a"_s), Old);
}

TEST(WriteInPlace, RefusedOpenLeavesTheOldBytes)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a"_s, Old);
    FaultyFileSystem faulty;
    faulty.Inject(Fault::RefuseOpen);
    EXPECT_EQ(WriteFailure(path, Longer), u"open refused"_s);
    EXPECT_EQ(folder.ReadFile(u"a"_s), Old);
}

TEST(WriteInPlace, FullDiskLeavesTheOldBytes)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a"_s, Old);
    FaultyFileSystem faulty;
    faulty.Inject(Fault::NoRoom);
    EXPECT_EQ(WriteFailure(path, Longer), u"no room"_s);
    EXPECT_EQ(folder.ReadFile(u"a"_s), Old);
}

TEST(WriteInPlace, NoNewRoomIsNeededForShorterContent)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a"_s, Old);
    FaultyFileSystem faulty;
    faulty.Inject(Fault::NoRoom);
    EXPECT_TRUE(WriteFailure(path, Shorter).isNull());
    EXPECT_EQ(folder.ReadFile(u"a"_s), Shorter);
}

TEST(WriteInPlace, FailureAfterAnyNumberOfBytesRaisesAndTheOldBytesAreBack)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a"_s, Old);
    for (qint64 bytes = 0; bytes < Longer.size(); ++bytes) {
        FaultyFileSystem faulty;
        faulty.FailAfter(bytes);
        faulty.OnlyAt(0);
        EXPECT_EQ(WriteFailure(path, Longer), u"write error"_s) << bytes;
        EXPECT_EQ(folder.ReadFile(u"a"_s), Old) << bytes;
    }
    FaultyFileSystem faulty;
    faulty.FailAfter(Longer.size());
    EXPECT_TRUE(WriteFailure(path, Longer).isNull());
}

TEST(WriteInPlace, FailureToCutOrSyncRaisesAndTheOldBytesAreBack)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a"_s, Old);
    FaultyFileSystem faulty;
    for (const auto& [fault, reason] :
         {std::pair(Fault::Resize, u"cannot change the length"_s), std::pair(Fault::Sync, u"cannot sync"_s)})
        for (const QByteArray& bytes : {Shorter, Longer}) {
            faulty.Inject(fault);
            faulty.OnlyAt(faulty.WritePoints());
            EXPECT_EQ(WriteFailure(path, bytes), reason);
            EXPECT_EQ(folder.ReadFile(u"a"_s), Old);
            faulty.Heal();
        }
    EXPECT_TRUE(WriteFailure(path, Shorter).isNull());
}

TEST(WriteInPlace, FileThatDidNotStandThereIsRemovedAfterEveryFault)
{
    const test::TempFolder folder;
    for (const Fault fault : AllWriteFaults)
        for (const qint64 bytes : {0, 5}) {
            FaultyFileSystem faulty;
            faulty.Inject(fault);
            if (fault == Fault::Write) faulty.FailAfter(bytes);
            EXPECT_FALSE(WriteFailure(folder.Path(u"a"_s), Longer).isEmpty());
            EXPECT_FALSE(folder.Exists(u"a"_s));
        }
}

TEST(WriteInPlace, EmptyFileStaysAnEmptyFileAfterEveryFault)
{
    const test::TempFolder folder;
    for (const Fault fault : AllWriteFaults) {
        const CString path = folder.WriteFile(u"a"_s, {});
        FaultyFileSystem faulty;
        faulty.Inject(fault);
        if (fault == Fault::Write) faulty.FailAfter(5);
        faulty.OnlyAt(0);
        EXPECT_FALSE(WriteFailure(path, Longer).isEmpty());
        EXPECT_TRUE(folder.Exists(u"a"_s));
        EXPECT_EQ(folder.ReadFile(u"a"_s), QByteArray());
    }
}

TEST(WriteInPlace, FormerBytesThatAreNoLongerThoseOfTheFileAreNotPutBack)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a"_s, Old);
    FaultyFileSystem faulty;
    faulty.FailAfter(5);
    faulty.OnlyAt(0);
    const QByteArray stale = "what stood there before somebody else wrote";
    EXPECT_THROW(Files().WriteInPlace(path, Longer, &stale), FileError);
    EXPECT_EQ(folder.ReadFile(u"a"_s), Old);
}

TEST(WriteInPlace, FileThatCannotBeReadAndSoNotBePutBackIsNotTouched)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a"_s, Old);
    FaultyFileSystem faulty;
    faulty.Inject(Fault::RefuseRead);
    EXPECT_EQ(WriteFailure(path, Longer), u"read refused"_s);
    EXPECT_EQ(folder.ReadFile(u"a"_s), Old);
}

TEST(FaultyFileSystem, CountsWritePointsAndFailsAtOneOfThem)
{
    const test::TempFolder folder;
    FaultyFileSystem faulty;
    faulty.Inject(Fault::RefuseOpen);
    faulty.OnlyAt(1);
    EXPECT_TRUE(WriteFailure(folder.Path(u"a"_s), Old).isNull());
    EXPECT_FALSE(WriteFailure(folder.Path(u"b"_s), Old).isNull());
    EXPECT_TRUE(WriteFailure(folder.Path(u"c"_s), Old).isNull());
    EXPECT_EQ(faulty.WritePoints(), 3);
}

TEST(FaultyFileSystem, RefusesReadingRemovingAndCreatingFolders)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a"_s, Old);
    FaultyFileSystem faulty;
    for (const Fault fault : {Fault::RefuseRead, Fault::RefuseRemove, Fault::RefuseCreateFolder})
        faulty.Inject(fault);
    CString reason;
    EXPECT_EQ(Files().Read(path, &reason), std::nullopt);
    EXPECT_EQ(reason, u"read refused"_s);
    EXPECT_EQ(Files().ReadHead(path, 1), std::nullopt);
    EXPECT_FALSE(Files().Remove(path));
    EXPECT_FALSE(Files().CreateFolder(folder.Path(u"f"_s)));
    EXPECT_EQ(faulty.WritePoints(), 0);
}

} // namespace
