#include "embedded/data/history/KeepingFiles.h"

#include "embedded/TestProject.h"
#include "embedded/data/engine/Error.h"
#include "embedded/data/project/ProjectFolder.h"
#include "platform/Apart.h"
#include "support/FaultyFileSystem.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QLockFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::History;
using embedded::HistoryEntry;
using embedded::KeepingFiles;
using test::TestProject;

namespace {

const CString KeptFile = u"app\\规则.xml"_s;

class KeepingFilesTest : public ::testing::Test
{
protected:
    KeepingFilesTest() { m_project.Put(); }

    History Open() const { return History(embedded::ProjectFolder(m_project.Folder())); }
    CString Path() const { return m_project.Path(KeptFile); }
    KeepingFiles Keeping(bool goesOn = false)
    {
        return KeepingFiles(
            Open(), [](const CString& path) { return path.endsWith(u".xml"_s); },
            [this, goesOn](const embedded::Error&) {
                ++m_asked;
                return goesOn;
            });
    }
    QList<QByteArray> Kept() const
    {
        QList<QByteArray> contents;
        for (const HistoryEntry& entry : Open().List(Path()))
            contents.append(Open().Read(entry));
        return contents;
    }
    QByteArray Content() const { return m_project.Temp().ReadFile(TestProject::Below(KeptFile)); }

    TestProject m_project;
    int m_asked = 0;
};

} // namespace

TEST_F(KeepingFilesTest, FormerContentIsKeptBeforeEachWrite)
{
    const KeepingFiles files = Keeping();
    for (const QByteArray bytes : {"one", "two", "three"})
        platform::Files().WriteInPlace(Path(), bytes);
    EXPECT_EQ(Content(), "three");
    EXPECT_EQ(Kept(), (QList<QByteArray>{"two", "one"}));
    EXPECT_EQ(m_asked, 0);
}

TEST_F(KeepingFilesTest, FileThatAnotherProgramWroteIsKeptBeforeItIsWrittenOver)
{
    const KeepingFiles files = Keeping();
    platform::Files().WriteInPlace(Path(), "mine");
    m_project.Temp().WriteFile(TestProject::Below(KeptFile), "somebody else's");
    platform::Files().WriteInPlace(Path(), "mine again");
    EXPECT_EQ(Kept(), QList<QByteArray>{"somebody else's"});
}

TEST_F(KeepingFilesTest, RemovedFileIsKept)
{
    const KeepingFiles files = Keeping();
    platform::Files().WriteInPlace(Path(), "rules");
    EXPECT_TRUE(platform::Files().Remove(Path()));
    EXPECT_EQ(Kept(), QList<QByteArray>{"rules"});
}

TEST_F(KeepingFilesTest, OtherFilesPassWithoutACopy)
{
    const KeepingFiles files = Keeping();
    const CString other = m_project.Path(u"app\\notes.txt"_s);
    platform::Files().WriteInPlace(other, "one");
    platform::Files().WriteInPlace(other, "two");
    EXPECT_TRUE(Open().ListAll().isEmpty());
}

TEST_F(KeepingFilesTest, WithItsEndCopiesEnd)
{
    {
        const KeepingFiles files = Keeping();
        platform::Files().WriteInPlace(Path(), "one");
    }
    platform::Files().WriteInPlace(Path(), "two");
    EXPECT_TRUE(Kept().isEmpty());
}

TEST_F(KeepingFilesTest, BytesPutBackAfterABrokenWriteLeaveNoCopyOfTheTornFile)
{
    m_project.Temp().WriteFile(TestProject::Below(KeptFile), "former");
    test::FaultyFileSystem disk;
    const KeepingFiles files = Keeping();
    platform::Files().WriteInPlace(Path(), "second");
    ASSERT_EQ(Kept(), QList<QByteArray>{"former"});
    ASSERT_TRUE(Open().Keep(Path()).has_value());
    disk.FailAfter(3);
    EXPECT_THROW(platform::Files().WriteInPlace(Path(), "third!"), platform::FileError);
    disk.Heal();
    platform::Files().PutBack(Path(), "second");
    EXPECT_EQ(Content(), "second");
    EXPECT_EQ(Kept(), (QList<QByteArray>{"second", "former"}));
}

TEST_F(KeepingFilesTest, WithoutACopyNothingIsWrittenUnlessThePersonGoesOn)
{
    m_project.Temp().WriteFile(TestProject::Below(KeptFile), "former");
    test::FaultyFileSystem disk;
    disk.Inject(test::Fault::RefuseOpen);
    disk.OnlyAt(0);
    const KeepingFiles files = Keeping(false);
    EXPECT_THROW(platform::Files().WriteInPlace(Path(), "new"), platform::FileError);
    EXPECT_EQ(m_asked, 1);
    EXPECT_EQ(Content(), "former");
}

TEST_F(KeepingFilesTest, WhoGoesOnWithoutCopiesIsAskedOnce)
{
    m_project.Temp().WriteFile(TestProject::Below(KeptFile), "former");
    test::FaultyFileSystem disk;
    disk.Inject(test::Fault::RefuseCreateFolder);
    const KeepingFiles files = Keeping(true);
    platform::Files().WriteInPlace(Path(), "new");
    platform::Files().WriteInPlace(Path(), "newer");
    EXPECT_EQ(Content(), "newer");
    EXPECT_EQ(m_asked, 1);
}

namespace {

/// Two specialties, "A" and "B", with something of each.
QByteArray Rules(const QByteArray& a, const QByteArray& b)
{
    return "<r><s name=\"A\" x=\"" + a + "\"/><s name=\"B\" x=\"" + b + "\"/></r>";
}

/// A dialog that works on specialty "A", while other programs write the file.
class OtherPrograms : public KeepingFilesTest
{
protected:
    OtherPrograms()
        : m_files(
              Open(), [](const CString& path) { return path.endsWith(u".xml"_s); },
              [](const embedded::Error&) { return false; },
              {[] { return u"A"_s; },
               [this](const CString& path, const HistoryEntry& copy) {
                   EXPECT_EQ(path, Path());
                   m_told.append(Open().Read(copy));
               },
               {}})
    {
        OtherWrites(Rules("1", "1"));
        Load();
    }

    /// Reads the file to work on it, and waits for the user.
    void Load()
    {
        platform::Files().Read(Path());
        QCoreApplication::processEvents();
    }
    /// As the store does it.
    void Save(const QByteArray& bytes)
    {
        platform::Files().Read(Path());
        platform::Files().WriteInPlace(Path(), bytes);
    }
    void OtherWrites(const QByteArray& bytes) const
    {
        m_project.Temp().WriteFile(TestProject::Below(KeptFile), bytes);
    }
    QDir Marks() const { return {m_project.Native(u"history\\locks"_s)}; }
    QStringList Held() const { return Marks().entryList({u"*.lock"_s}, QDir::Files); }

    QList<QByteArray> m_told;
    KeepingFiles m_files;
};

} // namespace

TEST_F(OtherPrograms, VersionOfTheSameSpecialtyIsKeptWhateverTheLimitAndTold)
{
    Open().SetLimit(0);
    OtherWrites(Rules("theirs", "1"));
    Save(Rules("mine", "1"));
    EXPECT_TRUE(m_told.isEmpty()) << "the module is in the middle of its save";
    QCoreApplication::processEvents();
    EXPECT_EQ(m_told, QList<QByteArray>{Rules("theirs", "1")});
    EXPECT_EQ(Content(), Rules("mine", "1"));
    Save(Rules("mine again", "1"));
    QCoreApplication::processEvents();
    EXPECT_EQ(m_told.size(), 1) << "told of its own save";
}

TEST_F(OtherPrograms, VersionsOfOtherSpecialtiesAreNotTold)
{
    OtherWrites(Rules("1", "theirs"));
    Save(Rules("mine", "theirs"));
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_told.isEmpty());
}

TEST_F(OtherPrograms, VersionThatWasLoadedSinceIsNotTold)
{
    OtherWrites(Rules("theirs", "1"));
    Load();
    Save(Rules("mine", "1"));
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_told.isEmpty());
}

TEST_F(OtherPrograms, WritingThatPassesTheRulesOnDoesNotHideThem)
{
    OtherWrites(Rules("theirs", "1"));
    Save("<?xml version=\"1.0\"?>\n" + Rules("theirs", "1")); // as the writing of the version does
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_told.isEmpty());
    Save(Rules("mine", "1"));
    QCoreApplication::processEvents();
    EXPECT_EQ(m_told.size(), 1);
}

TEST_F(OtherPrograms, FileIsLockedFromReadingUntilItIsWrittenOrTheUserIsAwaited)
{
    EXPECT_TRUE(Held().isEmpty());
    platform::Files().Read(Path());
    EXPECT_EQ(Held().size(), 1);
    platform::Files().WriteInPlace(Path(), Rules("mine", "1"));
    EXPECT_TRUE(Held().isEmpty());
    platform::Files().Read(Path());
    QCoreApplication::processEvents();
    EXPECT_TRUE(Held().isEmpty());
}

TEST_F(OtherPrograms, StepThatHandlesEventsKeepsItsFiles)
{
    {
        const KeepingFiles::Step step(m_files);
        platform::Files().Read(Path());
        QCoreApplication::processEvents();
        EXPECT_EQ(Held().size(), 1);
    }
    QCoreApplication::processEvents();
    EXPECT_TRUE(Held().isEmpty());
}

TEST_F(OtherPrograms, EventsWithinALongPieceOfWorkGiveNoFileBack)
{
    const platform::ScopedPieceRunner lively([](const platform::Piece& piece) {
        piece();
        QCoreApplication::processEvents();
    });
    constexpr qint64 Large = 64 * 1024 * 1024;
    platform::Files().Read(Path());
    platform::RunApart(Large, [] {});
    EXPECT_EQ(Held().size(), 1);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    EXPECT_TRUE(Held().isEmpty());
}

TEST_F(OtherPrograms, FileThatAnotherProgramHoldsIsReadAndNotWritten)
{
    qputenv("KTQDDE_LOCK_WAIT", "0");
    platform::Files().Read(Path());
    const QString mark = Marks().filePath(Held().value(0));
    QCoreApplication::processEvents();
    QLockFile other(mark);
    ASSERT_TRUE(other.tryLock());
    EXPECT_EQ(platform::Files().Read(Path()), Rules("1", "1"));
    EXPECT_THROW(platform::Files().WriteInPlace(Path(), "mine"), platform::FileError);
    EXPECT_FALSE(platform::Files().Remove(Path()));
    EXPECT_THROW(m_files.Keep(Path()), embedded::Occupied);
    OtherWrites(Rules("1", "theirs"));
    other.unlock();
    EXPECT_THROW(platform::Files().WriteInPlace(Path(), "mine"), platform::FileError)
        << "no longer what was read";
    EXPECT_EQ(Content(), Rules("1", "theirs"));
    QCoreApplication::processEvents();
    Save(Rules("mine", "theirs"));
    EXPECT_EQ(Content(), Rules("mine", "theirs"));
    qunsetenv("KTQDDE_LOCK_WAIT");
}
