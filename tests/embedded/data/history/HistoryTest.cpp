#include "embedded/data/history/History.h"

#include "embedded/TestProject.h"
#include "embedded/data/project/ProjectFolder.h"
#include "platform/Files.h"
#include "support/FaultyFileSystem.h"

#include <QtCore/QDir>
#include <QtCore/QSet>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::History;
using embedded::HistoryEntry;
using test::ErrorOf;
using test::TestProject;

namespace {

const CString RuleFile = u"app\\规则.xml"_s;
const QDateTime Noon(QDate(2026, 3, 1), QTime(12, 0), Qt::UTC);

class HistoryTest : public ::testing::Test
{
protected:
    HistoryTest() { m_project.Put(); }

    History Open() const { return History(embedded::ProjectFolder(m_project.Folder())); }
    /// With a clock that stands at that time.
    History OpenAt(const QDateTime& time) const
    {
        return History(embedded::ProjectFolder(m_project.Folder()), [time] { return time; });
    }
    HistoryEntry KeepAt(const QDateTime& time, const CString& file, const QByteArray& bytes) const
    {
        const CString path = m_project.Temp().WriteFile(TestProject::Below(file), bytes);
        return OpenAt(time).Keep(path).value();
    }
    CString Path() const { return m_project.Path(RuleFile); }
    void Write(const QByteArray& bytes) const
    {
        m_project.Temp().WriteFile(TestProject::Below(RuleFile), bytes);
    }
    QByteArray Content() const { return m_project.Temp().ReadFile(TestProject::Below(RuleFile)); }
    std::optional<HistoryEntry> WriteAndKeep(const QByteArray& bytes) const
    {
        Write(bytes);
        return Open().Keep(Path());
    }
    /// What the copies hold, the newest first.
    QList<QByteArray> Kept() const
    {
        QList<QByteArray> contents;
        for (const HistoryEntry& entry : Open().List(Path()))
            contents.append(Open().Read(entry));
        return contents;
    }
    /// A copy as the clock at another time would have made it.
    void RenameCopy(const HistoryEntry& entry, const CString& time) const
    {
        EXPECT_TRUE(platform::Files().Rename(entry.copy, entry.copy.left(entry.copy.lastIndexOf(u'\\') + 1) +
                                                             time + u".xml"_s));
    }

    TestProject m_project;
};

} // namespace

TEST_F(HistoryTest, KeepsBytesAsTheyAreTheNewestFirst)
{
    for (const QByteArray& bytes : {QByteArray("<a/>"), QByteArray("\xFF\0broken", 8), QByteArray()})
        EXPECT_TRUE(WriteAndKeep(bytes).has_value());
    EXPECT_EQ(Kept(), (QList<QByteArray>{QByteArray(), QByteArray("\xFF\0broken", 8), "<a/>"}));
    EXPECT_EQ(Content(), QByteArray());
}

TEST_F(HistoryTest, KeepsNothingThatTheLastCopyHoldsAndNothingOfAMissingFile)
{
    EXPECT_FALSE(Open().Keep(Path()).has_value());
    EXPECT_TRUE(WriteAndKeep("1").has_value());
    EXPECT_FALSE(WriteAndKeep("1").has_value());
    EXPECT_TRUE(WriteAndKeep("2").has_value());
    EXPECT_TRUE(WriteAndKeep("1").has_value());
    EXPECT_EQ(Kept().size(), 3);
}

TEST_F(HistoryTest, ManyCopiesAtOnceHaveIdsAndNumbersOfTheirOwn)
{
    QSet<CString> ids;
    for (int copy = 0; copy < 40; ++copy) {
        const auto entry = WriteAndKeep(QByteArray::number(copy));
        ASSERT_TRUE(entry.has_value());
        EXPECT_EQ(entry->number, copy + 1);
        ids.insert(entry->id);
        EXPECT_EQ(Open().Find(entry->id.toUpper()).copy, entry->copy);
    }
    EXPECT_EQ(ids.size(), 40);
    EXPECT_EQ(Kept().first(), "39");
}

TEST_F(HistoryTest, ClockThatStandsLeavesTheOrderOfAllCopiesRight)
{
    CArray<CString> expected;
    for (int copy = 0; copy < 20; ++copy) {
        // So that neither the order of the names nor of the folders happens to be the right one.
        const CString file = u"app\\%1.xml"_s.arg(QChar(u'a' + copy * 7 % 5));
        expected.prepend(KeepAt(Noon, file, QByteArray::number(copy)).id);
    }
    CArray<CString> listed;
    for (const HistoryEntry& entry : Open().ListAll()) {
        EXPECT_EQ(entry.time, Noon);
        listed.append(entry.id);
    }
    EXPECT_EQ(listed, expected);
}

TEST_F(HistoryTest, ClockThatWentBackDoesNotChangeTheOrder)
{
    KeepAt(Noon, RuleFile, "first");
    const HistoryEntry other = KeepAt(Noon.addYears(-10), u"app\\other.xml"_s, "of another file");
    const HistoryEntry next = KeepAt(Noon.addYears(-20), RuleFile, "second");
    EXPECT_EQ(Kept(), (QList<QByteArray>{"second", "first"}));
    EXPECT_EQ(next.time, Noon.addYears(-20)) << "the time is what the clock said";
    EXPECT_EQ(Open().ListAll().first().id, next.id);
    EXPECT_EQ(Open().ListAll().at(1).id, other.id);
}

TEST_F(HistoryTest, BeyondTheLimitTheFirstKeptGoWhateverTheClockSays)
{
    Open().SetLimit(2);
    for (int copy = 0; copy < 4; ++copy)
        KeepAt(Noon.addDays(-copy), RuleFile, QByteArray::number(copy));
    EXPECT_EQ(Kept(), (QList<QByteArray>{"3", "2"}));
}

TEST_F(HistoryTest, CopiesOfProgramsThatDidNotCountAreListedAsTheOlderOnesByTheirTime)
{
    RenameCopy(*WriteAndKeep("older"), u"29990101-000000-000"_s);
    RenameCopy(*WriteAndKeep("later"), u"29990101-000000-001"_s);
    EXPECT_EQ(Kept(), (QList<QByteArray>{"later", "older"}));
    WriteAndKeep("counted");
    EXPECT_EQ(Kept(), (QList<QByteArray>{"counted", "later", "older"}));
    EXPECT_EQ(Open().List(Path()).last().time, QDateTime(QDate(2999, 1, 1), QTime(0, 0), Qt::UTC));
    EXPECT_EQ(Open().List(Path()).last().number, 0);
}

TEST_F(HistoryTest, NamesWithANumberThatIsNoneAreNoCopies)
{
    const auto entry = WriteAndKeep("1");
    const CString folder = entry->copy.left(entry->copy.lastIndexOf(u'\\') + 1);
    for (const CString& number :
         {u"0"_s, u"-1"_s, u"x"_s, u"9223372036854775807"_s, u"99999999999999999999"_s})
        platform::Files().WriteInPlace(folder + u"20240101-000000-000-%1.xml"_s.arg(number), "x");
    EXPECT_EQ(Kept(), QList<QByteArray>{"1"});
    WriteAndKeep("2");
    EXPECT_EQ(Open().List(Path()).first().number, 2);
}

TEST_F(HistoryTest, TimeInAnHourThatSummerTimeLeavesOutIsListed)
{
    RenameCopy(*WriteAndKeep("spring"), u"20240331-023000-000"_s);
    EXPECT_EQ(Kept(), QList<QByteArray>{"spring"});
}

TEST_F(HistoryTest, BeyondTheLimitTheOldestGo)
{
    EXPECT_EQ(Open().Limit(), History::DefaultLimit);
    Open().SetLimit(3);
    for (int copy = 0; copy < 6; ++copy)
        WriteAndKeep(QByteArray::number(copy));
    EXPECT_EQ(Kept(), (QList<QByteArray>{"5", "4", "3"}));
}

TEST_F(HistoryTest, LimitZeroKeepsNoMoreAndRemovesNothing)
{
    WriteAndKeep("1");
    Open().SetLimit(0);
    EXPECT_FALSE(WriteAndKeep("2").has_value());
    EXPECT_EQ(Kept(), QList<QByteArray>{"1"});
}

TEST_F(HistoryTest, LimitThatMakesNoSenseInTheIniIsTheDefault)
{
    for (const QByteArray value : {"-1", "many", "", "100001", "3.5"}) {
        m_project.Temp().WriteFile(TestProject::Below(u"SysRegedit.ini"_s),
                                   "[History]\nCopies=" + value + "\n");
        EXPECT_EQ(Open().Limit(), History::DefaultLimit) << value.toStdString();
    }
    EXPECT_NE(ErrorOf([&] { Open().SetLimit(-1); }), u"no error"_s);
}

TEST_F(HistoryTest, RestoreGivesTheBytesBackAndKeepsWhatTheyReplace)
{
    const auto first = WriteAndKeep("first");
    Write("unkept");
    History history = Open();
    const auto replaced = history.Restore(*first);
    EXPECT_EQ(Content(), "first");
    ASSERT_TRUE(replaced.has_value());
    EXPECT_EQ(history.Read(*replaced), "unkept");
    EXPECT_EQ(history.Restore(*replaced)->path, Path());
    EXPECT_EQ(Content(), "unkept");
}

TEST_F(HistoryTest, RestoreBringsBackAFileWhoseFolderIsGone)
{
    m_project.Temp().MakeFolder(TestProject::Below(u"fort"_s));
    const CString path = m_project.Temp().WriteFile(TestProject::Below(u"fort\\a.xml"_s), "1");
    const auto entry = Open().Keep(path);
    EXPECT_TRUE(QDir(m_project.Native(u"fort"_s)).removeRecursively());
    Open().Restore(*entry);
    EXPECT_EQ(m_project.Temp().ReadFile(TestProject::Below(u"fort\\a.xml"_s)), "1");
}

TEST_F(HistoryTest, RestoreThatFailsLeavesFileAndCopies)
{
    Open().SetLimit(1);
    const auto first = WriteAndKeep("first, which is longer");
    Write("second");
    using enum test::Fault;
    for (const test::Fault fault : {RefuseOpen, NoRoom, Write, Resize, Sync}) {
        test::FaultyFileSystem files;
        files.Inject(fault);
        // The copy of what is replaced is written at the first point, once; the file at the next.
        files.OnlyAt(Kept().size() == 1 ? 1 : 0);
        const CString error = ErrorOf([&] { Open().Restore(*first); });
        files.Heal();
        EXPECT_NE(error, u"no error"_s) << static_cast<int>(fault);
        EXPECT_EQ(Content(), "second") << static_cast<int>(fault);
        EXPECT_EQ(Kept(), (QList<QByteArray>{"second", "first, which is longer"}));
    }
    Open().Restore(*first);
    EXPECT_EQ(Content(), "first, which is longer");
}

TEST_F(HistoryTest, CopyThatCannotBeWrittenIsAnErrorAndIsNeverListed)
{
    Write("content");
    using enum test::Fault;
    for (const test::Fault fault : {RefuseOpen, NoRoom, Write, Resize, Sync, RefuseCreateFolder}) {
        const TestProject project;
        project.Put();
        const CString path = project.Temp().WriteFile(TestProject::Below(RuleFile), "content");
        History history{embedded::ProjectFolder(project.Folder())};
        test::FaultyFileSystem files;
        files.Inject(fault);
        EXPECT_NE(ErrorOf([&] { history.Keep(path); }), u"no error"_s) << static_cast<int>(fault);
        files.Heal();
        EXPECT_TRUE(history.ListAll().isEmpty()) << static_cast<int>(fault);
        EXPECT_TRUE(history.Keep(path).has_value());
        EXPECT_EQ(history.ListAll().size(), 1);
    }
}

TEST_F(HistoryTest, HalfWrittenCopyOfAKilledProgramIsNotListedAndGoesInTime)
{
    const auto entry = WriteAndKeep("1");
    const CString folder = entry->copy.left(entry->copy.lastIndexOf(u'\\') + 1);
    platform::Files().WriteInPlace(folder + u"20200101-000000-000.77.part"_s, "hal");
    platform::Files().WriteInPlace(folder + u"29990101-000000-000.77.part"_s, "hal");
    EXPECT_EQ(Kept(), QList<QByteArray>{"1"});
    WriteAndKeep("2");
    EXPECT_FALSE(platform::Files().Exists(folder + u"20200101-000000-000.77.part"_s));
    EXPECT_TRUE(platform::Files().Exists(folder + u"29990101-000000-000.77.part"_s));
}

TEST_F(HistoryTest, ForeignFilesAndChangedPathsAreNotListed)
{
    const auto entry = WriteAndKeep("1");
    const CString folder = entry->copy.left(entry->copy.lastIndexOf(u'\\') + 1);
    platform::Files().WriteInPlace(folder + u"notes.xml"_s, "x");
    platform::Files().WriteInPlace(folder + u"20241301-000000-000.xml"_s, "x");
    EXPECT_EQ(Open().ListAll().size(), 1);
    platform::Files().WriteInPlace(folder + u"path.txt"_s, ".\\app\\anders.xml\n");
    EXPECT_TRUE(Open().ListAll().isEmpty());
}

TEST_F(HistoryTest, FilesOfOneNameInSeveralFoldersAreKeptApart)
{
    m_project.Temp().MakeFolder(u"elsewhere "_s);
    const CString outside = m_project.Temp().WriteFile(u"elsewhere \\规则.xml"_s, "outside");
    WriteAndKeep("inside");
    Open().Keep(outside);
    EXPECT_EQ(Kept(), QList<QByteArray>{"inside"});
    ASSERT_EQ(Open().List(outside).size(), 1);
    EXPECT_EQ(Open().Read(Open().List(outside).first()), "outside");
    EXPECT_EQ(Open().ListAll().size(), 2);
}

TEST_F(HistoryTest, MovesWithItsProject)
{
    WriteAndKeep("1");
    const CString id = Open().ListAll().first().id;
    EXPECT_TRUE(QDir().rename(m_project.Folder(), m_project.Temp().Native(u"moved"_s)));
    History moved{embedded::ProjectFolder(m_project.Temp().Native(u"moved"_s))};
    EXPECT_EQ(moved.Find(id).path, m_project.Temp().Path(u"moved\\"_s + RuleFile));
}

TEST_F(HistoryTest, UnknownIdIsNamedInTheError)
{
    EXPECT_TRUE(ErrorOf([&] { Open().Find(u"abcdef0"_s); }).contains(u"abcdef0"_s));
}

TEST_F(HistoryTest, HostHasIt)
{
    Write("1");
    embedded::EmbeddedHost host(m_project.Folder());
    EXPECT_TRUE(host.History().Keep(Path()).has_value());
    EXPECT_EQ(Kept(), QList<QByteArray>{"1"});
}

namespace {

/// A rule file that has been renamed, with a copy before and none since.
class RenamedFile : public HistoryTest
{
protected:
    RenamedFile()
    {
        WriteAndKeep("old");
        Rename(RuleFile, u"app\\新名.xml"_s);
    }

    void Rename(const CString& from, const CString& to)
    {
        platform::Files().Rename(m_project.Path(from), m_project.Path(to));
        Open().Follow(m_project.Path(from), m_project.Path(to));
    }
    QList<QByteArray> KeptOf(const CString& file) const
    {
        QList<QByteArray> contents;
        for (const HistoryEntry& entry : Open().List(m_project.Path(file)))
            contents.append(Open().Read(entry));
        return contents;
    }
    void KeepAs(const CString& file, const QByteArray& bytes) const { KeepAt(Noon, file, bytes); }
};

const CString NewName = u"app\\新名.xml"_s;

} // namespace

TEST_F(RenamedFile, ListsTheCopiesUnderItsNewNameAndWritesThemBackThere)
{
    KeepAs(NewName, "new");
    EXPECT_EQ(KeptOf(NewName), QList<QByteArray>({"new", "old"}));
    Open().Restore(Open().List(m_project.Path(NewName)).last());
    EXPECT_EQ(platform::Files().Read(m_project.Path(NewName)), "old");
    EXPECT_FALSE(platform::Files().Exists(Path()));
}

TEST_F(RenamedFile, GetsNoNewCopyForWhatTheLastOneHolds)
{
    EXPECT_EQ(Open().Keep(m_project.Path(NewName)), std::nullopt);
    EXPECT_EQ(Open().KeepInAnyCase(m_project.Path(NewName))->path, m_project.Path(NewName));
}

TEST_F(RenamedFile, CopiesOfAnotherFileUnderTheFormerNameAreNotItsOwn)
{
    KeepAs(RuleFile, "another");
    EXPECT_EQ(KeptOf(NewName), QList<QByteArray>({"old"}));
    EXPECT_EQ(Open().ListAll().size(), 2);
}

TEST_F(RenamedFile, IsFollowedThroughSeveralNamesAndBack)
{
    KeepAs(NewName, "second");
    Rename(NewName, u"app\\三.xml"_s);
    KeepAs(u"app\\三.xml"_s, "third");
    EXPECT_EQ(KeptOf(u"app\\三.xml"_s), QList<QByteArray>({"third", "second", "old"}));
    Rename(u"app\\三.xml"_s, RuleFile);
    EXPECT_EQ(KeptOf(RuleFile), QList<QByteArray>({"third", "second", "old"}));
}

TEST_F(RenamedFile, TheFormerNameIsWrittenFromTheProjectOn)
{
    QByteArray found;
    for (const CString& folder : platform::Files().FindFolders(m_project.Path(u"history"_s)))
        found += platform::Files()
                     .Read(m_project.Path(u"history\\"_s + folder + u"\\former.txt"_s))
                     .value_or(QByteArray());
    EXPECT_EQ(QString::fromUtf8(found), u"1 .\\app\\规则.xml\n"_s);
}

TEST_F(RenamedFile, LinesThatAreNoneArePassedOver)
{
    for (const CString& folder : platform::Files().FindFolders(m_project.Path(u"history"_s))) {
        const CString file = m_project.Path(u"history\\"_s + folder + u"\\former.txt"_s);
        if (const auto former = platform::Files().Read(file))
            platform::Files().WriteInPlace(file, "nonsense\n\n12\n" + *former);
    }
    EXPECT_EQ(KeptOf(NewName), QList<QByteArray>({"old"}));
}
