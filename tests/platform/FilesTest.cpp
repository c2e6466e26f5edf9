#include "platform/Files.h"

#include "platform/Paths.h"
#include "support/FaultyFileSystem.h"
#include "support/TempFolder.h"

#include <QtCore/QFile>

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using platform::Files;

namespace {

CStringArray Sorted(CStringArray names)
{
    std::sort(names.begin(), names.end());
    return names;
}

TEST(Files, ExistsForFilesAndFolders)
{
    const test::TempFolder folder;
    EXPECT_TRUE(Files().Exists(folder.Root()));
    EXPECT_TRUE(Files().Exists(folder.WriteFile(u"a.xml"_s, "x")));
    EXPECT_FALSE(Files().Exists(folder.Path(u"b.xml"_s)));
    EXPECT_FALSE(Files().Exists(CString()));
}

TEST(Files, ReadGivesTheWholeContent)
{
    const test::TempFolder folder;
    const QByteArray bytes("a\0\r\n\xFF", 5);
    EXPECT_EQ(Files().Read(folder.WriteFile(u"规则.xml"_s, bytes)), bytes);
    EXPECT_EQ(Files().Read(folder.WriteFile(u"empty"_s, "")), QByteArray());
}

TEST(Files, ReadingPieceByPieceGivesTheSameBytes)
{
    const test::TempFolder folder;
    const auto file = Files().OpenForReading(folder.WriteFile(u"规则.xml"_s, "abcdefg"));
    EXPECT_EQ(file->Size(), 7);
    char piece[4] = {};
    EXPECT_EQ(file->Read(piece, 4), 4);
    EXPECT_EQ(QByteArray(piece, 4), "abcd");
    EXPECT_EQ(file->Read(piece, 4), 3);
    EXPECT_EQ(QByteArray(piece, 3), "efg");
    EXPECT_EQ(file->Read(piece, 4), 0);
    file->Seek(2);
    EXPECT_EQ(file->Read(piece, 1), 1);
    EXPECT_EQ(piece[0], 'c');
}

TEST(Files, ReadingPieceByPieceTakesRegularFilesOnly)
{
    const test::TempFolder folder;
    EXPECT_THROW(Files().OpenForReading(folder.Path(u"missing"_s)), platform::FileError);
    EXPECT_THROW(Files().OpenForReading(folder.MakeFolder(u"folder"_s)), platform::FileError);
    EXPECT_THROW(Files().OpenForReading(CString()), platform::FileError);
}

TEST(Files, ReadTellsWhyItGivesNothing)
{
    const test::TempFolder folder;
    for (const CString& path : {folder.Path(u"missing"_s), folder.MakeFolder(u"folder"_s), CString(),
                                CString(u"a\0b"_s), folder.Path(u"missing\\a.xml"_s)}) {
        CString reason;
        EXPECT_EQ(Files().Read(path, &reason), std::nullopt) << path.toStdString();
        EXPECT_FALSE(reason.isEmpty()) << path.toStdString();
    }
}

TEST(Files, ReadWholeGivesTheContentOrRaisesWithPathAndReason)
{
    const test::TempFolder folder;
    const QByteArray bytes("a\0\r\n\xFF", 5);
    EXPECT_EQ(Files().ReadWhole(folder.WriteFile(u"a.xml"_s, bytes)), bytes);
    const CString missing = folder.Path(u"b.xml"_s);
    CString reason;
    ASSERT_FALSE(Files().Read(missing, &reason));
    try {
        Files().ReadWhole(missing);
        FAIL() << "read what is not there";
    } catch (const platform::FileError& error) {
        EXPECT_EQ(error.Path(), missing);
        EXPECT_EQ(error.Reason(), reason);
    }
}

TEST(Files, ReadLeavesTheReasonAloneOnSuccess)
{
    const test::TempFolder folder;
    CString reason = u"untouched"_s;
    EXPECT_TRUE(Files().Read(folder.WriteFile(u"a"_s, "x"), &reason));
    EXPECT_EQ(reason, u"untouched"_s);
}

TEST(Files, ReadHeadGivesAtMostThatManyBytes)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a"_s, "12345");
    EXPECT_EQ(Files().ReadHead(path, 3), QByteArray("123"));
    EXPECT_EQ(Files().ReadHead(path, 5), QByteArray("12345"));
    EXPECT_EQ(Files().ReadHead(path, 99), QByteArray("12345"));
    EXPECT_EQ(Files().ReadHead(path, 0), QByteArray());
    EXPECT_EQ(Files().ReadHead(path, -1), QByteArray());
    EXPECT_EQ(Files().ReadHead(folder.Path(u"missing"_s), 3), std::nullopt);
}

TEST(Files, RemoveTakesFilesAway)
{
    const test::TempFolder folder;
    EXPECT_TRUE(Files().Remove(folder.WriteFile(u"a"_s, "x")));
    EXPECT_FALSE(folder.Exists(u"a"_s));
}

TEST(Files, RemoveIsFalseWhenThereIsNothingToRemove)
{
    const test::TempFolder folder;
    EXPECT_FALSE(Files().Remove(folder.Path(u"a"_s)));
    EXPECT_FALSE(Files().Remove(folder.MakeFolder(u"folder"_s)));
    EXPECT_TRUE(folder.Exists(u"folder"_s));
    EXPECT_FALSE(Files().Remove(CString()));
}

TEST(Files, CreateFolderCreatesOneLevel)
{
    const test::TempFolder folder;
    EXPECT_TRUE(Files().CreateFolder(folder.Path(u"自动套配置"_s)));
    EXPECT_TRUE(folder.Exists(u"自动套配置"_s));
    EXPECT_FALSE(Files().CreateFolder(folder.Path(u"自动套配置"_s))) << "it exists";
    EXPECT_FALSE(Files().CreateFolder(folder.Path(u"no\\two"_s))) << "its parent does not exist";
    EXPECT_FALSE(folder.Exists(u"no"_s));
    EXPECT_FALSE(Files().CreateFolder(CString()));
}

TEST(Files, FindFilesGivesNamesOfThatExtensionInAnyLetterCase)
{
    const test::TempFolder folder;
    for (const CString& name : {u"b.xml"_s, u"a.XML"_s, u"c.xml.bak"_s, u"配置.xml"_s, u"axml"_s})
        folder.WriteFile(name, "");
    EXPECT_EQ(Sorted(Files().FindFiles(folder.Root(), u".xml"_s)),
              Sorted({u"a.XML"_s, u"b.xml"_s, u"配置.xml"_s}));
}

TEST(Files, FindFilesLeavesFoldersAndWhatIsInThemOut)
{
    const test::TempFolder folder;
    folder.MakeFolder(u"folder.xml"_s);
    folder.WriteFile(u"folder.xml\\inner.xml"_s, "");
    EXPECT_EQ(Files().FindFiles(folder.Root(), u".xml"_s), CStringArray());
}

TEST(Files, FindFilesInAMissingFolderFindsNothing)
{
    const test::TempFolder folder;
    EXPECT_EQ(Files().FindFiles(folder.Path(u"missing"_s), u".xml"_s), CStringArray());
    EXPECT_EQ(Files().FindFiles(CString(), u""_s), CStringArray());
}

#if !defined(_WIN32)
TEST(Files, FindFilesLeavesOutWhatHasNoPathText)
{
    const test::TempFolder folder;
    QFile file(folder.Native(CString()) + u"a\\b.xml"_s);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(Files().FindFiles(folder.Root(), u".xml"_s), CStringArray());
}
#endif

TEST(FileCopy, CreatesOrOverwritesTheTarget)
{
    const test::TempFolder folder;
    const CString source = folder.WriteFile(u"a"_s, "new");
    folder.WriteFile(u"old"_s, "something longer");
    EXPECT_TRUE(Files().Copy(source, folder.Path(u"created"_s)));
    EXPECT_TRUE(Files().Copy(source, folder.Path(u"old"_s)));
    EXPECT_EQ(folder.ReadFile(u"created"_s), "new");
    EXPECT_EQ(folder.ReadFile(u"old"_s), "new");
    EXPECT_EQ(folder.ReadFile(u"a"_s), "new");
}

TEST(FileCopy, OntoItselfChangesNothing)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a"_s, "content");
    EXPECT_TRUE(Files().Copy(path, path));
    EXPECT_EQ(folder.ReadFile(u"a"_s), "content");
}

TEST(FileCopy, MissingSourceIsFalseAndLeavesTheTargetAlone)
{
    const test::TempFolder folder;
    const CString target = folder.WriteFile(u"target"_s, "old");
    CString reason;
    EXPECT_FALSE(Files().Copy(folder.Path(u"missing"_s), target, &reason));
    EXPECT_FALSE(reason.isEmpty());
    EXPECT_FALSE(Files().Copy(folder.Path(u"missing"_s), target));
    EXPECT_EQ(folder.ReadFile(u"target"_s), "old");
}

TEST(FileCopy, TargetThatCannotBeWrittenIsFalseWithAReason)
{
    const test::TempFolder folder;
    const CString source = folder.WriteFile(u"a"_s, "new");
    CString reason;
    EXPECT_FALSE(Files().Copy(source, folder.Path(u"missing\\b"_s), &reason));
    EXPECT_FALSE(reason.isEmpty());
    EXPECT_FALSE(Files().Copy(source, folder.Root()));
}

TEST(FileCopy, CopyThatBreaksOffLeavesTheTargetAsItWasOrAway)
{
    const test::TempFolder folder;
    const CString source = folder.WriteFile(u"a"_s, "the new content");
    using enum test::Fault;
    for (const test::Fault fault : {RefuseOpen, NoRoom, Write, Resize, Sync})
        for (const CString& name : {u"old"_s, u"new"_s}) {
            folder.WriteFile(u"old"_s, "old");
            test::FaultyFileSystem faulty;
            faulty.Inject(fault);
            if (fault == Write) faulty.FailAfter(7);
            faulty.OnlyAt(0);
            CString reason;
            EXPECT_FALSE(Files().Copy(source, folder.Path(name), &reason));
            EXPECT_FALSE(reason.isEmpty());
            EXPECT_EQ(folder.ReadFile(u"old"_s), "old");
            EXPECT_FALSE(folder.Exists(u"new"_s));
        }
}

TEST(FileError, NamesFileAndReason)
{
    const platform::FileError error(u"C:\\规则.xml"_s, u"denied"_s);
    EXPECT_EQ(error.Path(), u"C:\\规则.xml"_s);
    EXPECT_EQ(error.Reason(), u"denied"_s);
    EXPECT_EQ(error.Message(), platform::ToNative(error.Path()) + u": denied"_s);
#if !defined(_WIN32)
    EXPECT_EQ(error.Message(), u"C:/规则.xml: denied"_s);
#endif
    EXPECT_EQ(QString::fromUtf8(error.what()), error.Message());
}

/// Counts one operation and passes the others on.
class CountingFileSystem : public platform::FileSystemProxy
{
public:
    using FileSystemProxy::FileSystemProxy;
    bool Exists(const CString& path) override
    {
        ++lookups;
        return FileSystemProxy::Exists(path);
    }
    int lookups = 0;
};

TEST(FileSystemProxy, PassesEveryOperationOn)
{
    const test::TempFolder folder;
    CountingFileSystem proxy(platform::RealFileSystem());
    const platform::ScopedFileSystem installed(proxy);
    const CString path = folder.Path(u"a.xml"_s);
    Files().WriteInPlace(path, "12");
    EXPECT_TRUE(Files().Exists(path));
    EXPECT_EQ(proxy.lookups, 1);
    EXPECT_EQ(Files().Read(path), QByteArray("12"));
    EXPECT_EQ(Files().ReadHead(path, 1), QByteArray("1"));
    EXPECT_EQ(Files().FindFiles(folder.Root(), u".xml"_s), CStringArray{u"a.xml"_s});
    EXPECT_TRUE(Files().CreateFolder(folder.Path(u"f"_s)));
    EXPECT_EQ(Files().FindFolders(folder.Root()), CStringArray{u"f"_s});
    EXPECT_TRUE(Files().Rename(path, folder.Path(u"b.xml"_s)));
    EXPECT_EQ(Files().KindOf(folder.Root()), platform::FileKind::Folder);
    EXPECT_EQ(Files().ThroughLinks(path), path);
    Files().WriteInPlace(path, "2");
    EXPECT_TRUE(Files().MoveOver(path, folder.Path(u"b.xml"_s)));
    EXPECT_EQ(Files().Read(folder.Path(u"b.xml"_s)), QByteArray("2"));
    EXPECT_TRUE(Files().Remove(folder.Path(u"b.xml"_s)));
    EXPECT_FALSE(folder.Exists(u"a.xml"_s));
}

TEST(Rename, NeverTakesThePlaceOfAnotherFile)
{
    const test::TempFolder folder;
    const CString from = folder.WriteFile(u"甲.xml"_s, "1");
    const CString to = folder.WriteFile(u"乙.xml"_s, "2");
    EXPECT_FALSE(Files().Rename(from, to));
    EXPECT_EQ(folder.ReadFile(u"甲.xml"_s), "1");
    EXPECT_EQ(folder.ReadFile(u"乙.xml"_s), "2");
    EXPECT_TRUE(Files().Rename(from, folder.Path(u"丙.xml"_s)));
    EXPECT_FALSE(folder.Exists(u"甲.xml"_s));
    EXPECT_EQ(folder.ReadFile(u"丙.xml"_s), "1");
    EXPECT_FALSE(Files().Rename(from, folder.Path(u"丁.xml"_s)));
}

TEST(FindFolders, GivesFoldersOnlyAndNothingForAMissingOne)
{
    const test::TempFolder folder;
    folder.WriteFile(u"a.xml"_s, "1");
    folder.MakeFolder(u"乙\\深"_s);
    EXPECT_EQ(Files().FindFolders(folder.Root()), CStringArray{u"乙"_s});
    EXPECT_TRUE(Files().FindFolders(folder.Path(u"没有"_s)).isEmpty());
    EXPECT_TRUE(Files().FindFolders({}).isEmpty());
}

TEST(ScopedFileSystem, NestsAndGivesTheFormerBack)
{
    CountingFileSystem outer(platform::RealFileSystem());
    const platform::ScopedFileSystem outerInstalled(outer);
    {
        CountingFileSystem inner(outer);
        const platform::ScopedFileSystem innerInstalled(inner);
        EXPECT_EQ(&Files(), &inner);
    }
    EXPECT_EQ(&Files(), &outer);
}

TEST(ScopedFileSystem, RealOneIsInForceWithoutAny)
{
    EXPECT_EQ(&Files(), &platform::RealFileSystem());
}

} // namespace
