#include "platform/ReplacedFile.h"

#include "platform/Files.h"
#include "support/FaultyFileSystem.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using platform::FileError;
using platform::ReplacedFile;

namespace {

void WriteAll(const CString& path, const QByteArray& bytes)
{
    ReplacedFile file(path);
    file.Write(bytes);
    file.Commit();
}

} // namespace

TEST(ReplacedFile, IsMadeOrReplacedAtTheEndOnly)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"表.csv"_s, "old and longer");
    ReplacedFile file(path);
    file.Write("n");
    file.Write("ew");
    EXPECT_EQ(folder.ReadFile(u"表.csv"_s), "old and longer");
    file.Commit();
    EXPECT_EQ(folder.ReadFile(u"表.csv"_s), "new");
    WriteAll(folder.Path(u"other"_s), "fresh");
    EXPECT_EQ(folder.ReadFile(u"other"_s), "fresh");
    EXPECT_EQ(folder.FileNames(), (CStringArray{u"other"_s, u"表.csv"_s}));
}

TEST(ReplacedFile, WithoutAnEndLeavesNothing)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a"_s, "old");
    {
        ReplacedFile file(path);
        file.Write(QByteArray(3 << 20, 'x'));
        ReplacedFile other(folder.Path(u"b"_s));
        other.Write("x");
    }
    EXPECT_EQ(folder.ReadFile(u"a"_s), "old");
    EXPECT_EQ(folder.FileNames(), CStringArray{u"a"_s});
}

TEST(ReplacedFile, TwoAtATimeHaveEachItsBytes)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a"_s, "old");
    ReplacedFile first(path);
    ReplacedFile second(path);
    first.Write("first and longer");
    second.Write("second");
    first.Commit();
    EXPECT_EQ(folder.ReadFile(u"a"_s), "first and longer");
    second.Commit();
    EXPECT_EQ(folder.ReadFile(u"a"_s), "second");
    EXPECT_EQ(folder.FileNames(), CStringArray{u"a"_s});
}

TEST(ReplacedFile, HoldsWhatIsWrittenInManyPieces)
{
    const test::TempFolder folder;
    QByteArray all;
    ReplacedFile file(folder.Path(u"a"_s));
    for (int i = 0; i < 300000; ++i) {
        const QByteArray piece = QByteArray::number(i) + '\n';
        all += piece;
        file.Write(piece);
    }
    file.Commit();
    EXPECT_EQ(folder.ReadFile(u"a"_s), all);
}

TEST(ReplacedFile, EveryFaultOfTheDiskLeavesTheOldFileWholeAndNothingElse)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a"_s, "old");
    test::FaultyFileSystem files;
    using enum test::Fault;
    for (const test::Fault fault : {RefuseOpen, NoRoom, Write, Resize, Sync}) {
        for (const int point : {0, 1}) {
            // That no file can be made beside it is for the next test.
            if ((point == 0) != (fault == RefuseOpen)) continue;
            files.Inject(fault);
            if (fault == Write) files.FailAfter(2 << 20);
            files.OnlyAt(files.WritePoints() + point);
            EXPECT_THROW(WriteAll(path, QByteArray(3 << 20, 'x')), FileError)
                << static_cast<int>(fault) << ' ' << point;
            files.Heal();
            EXPECT_EQ(folder.ReadFile(u"a"_s), "old");
            EXPECT_EQ(folder.FileNames(), CStringArray{u"a"_s});
        }
    }
}

TEST(ReplacedFile, WhereNothingCanBeMadeBesideTheFileItIsWrittenInPlace)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a"_s, "old");
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseOpen);
    files.OnlyAt(files.WritePoints() + 1); // the first opening asks whether the file may be written
    WriteAll(path, "new");
    files.Heal();
    EXPECT_EQ(folder.ReadFile(u"a"_s), "new");
    EXPECT_EQ(folder.FileNames(), CStringArray{u"a"_s});
}

TEST(ReplacedFile, FolderIsRefused)
{
    const test::TempFolder folder;
    EXPECT_THROW(WriteAll(folder.MakeFolder(u"sub"_s), "x"), FileError);
    EXPECT_TRUE(folder.FileNames().isEmpty());
}
