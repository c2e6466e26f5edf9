#include "embedded/data/office/OfficeMemory.h"

#include "embedded/TestProject.h"
#include "embedded/data/engine/Error.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::OfficeMemory;
using embedded::Publication;
using embedded::VersionMark;
using embedded::WaitingPublication;

namespace {

class OfficeMemoryFile : public ::testing::Test
{
protected:
    OfficeMemory Open() { return OfficeMemory(m_folder.Path(u"office.db"_s)); }
    /// The file of an older program, which knew versions by their numbers, and projects by their names.
    void MakeFormer()
    {
        embedded::Database former(m_folder.Path(u"office.db"_s));
        former.ExecuteScript(
            u"CREATE TABLE seen (revision INTEGER NOT NULL, at TEXT NOT NULL);"
            "CREATE TABLE bases (configuration TEXT PRIMARY KEY, version INTEGER NOT NULL);"
            "CREATE TABLE waiting (id INTEGER PRIMARY KEY AUTOINCREMENT, since TEXT NOT NULL, configuration "
            "TEXT NOT NULL UNIQUE, base INTEGER NOT NULL, content BLOB NOT NULL, note TEXT NOT NULL, project "
            "TEXT NOT NULL);"
            "CREATE TABLE waiting_numbers (waiting INTEGER NOT NULL REFERENCES waiting (id), library TEXT "
            "NOT NULL, number TEXT NOT NULL, name TEXT NOT NULL, unit TEXT NOT NULL);"
            "INSERT INTO bases VALUES ('一', 4);"
            "INSERT INTO waiting (since, configuration, base, content, note, project) VALUES "
            "('2026-02-03T04:05:06.007Z', '一', 4, x'61', '说明', '工程@机器')"_s);
        former.SetSchemaVersion(1);
    }
    /// As it was made by `MakeFormer`.
    static void ExpectFormer(OfficeMemory& memory)
    {
        EXPECT_EQ(memory.Base(u"一"_s), VersionMark(4, {}));
        const CArray<WaitingPublication> waiting = memory.Waiting();
        ASSERT_EQ(waiting.size(), 1);
        EXPECT_EQ(waiting[0].publication.base, VersionMark(4, {}));
        EXPECT_EQ(waiting[0].publication.content, "a");
        EXPECT_EQ(waiting[0].publication.projectId, CString());
        EXPECT_TRUE(memory.Sent(u"一"_s).isEmpty());
        EXPECT_FALSE(memory.LastSeen());
    }

    test::TempFolder m_folder;
};

Publication Sample(const CString& configuration, const QByteArray& content)
{
    return {configuration,
            {3, "digest"},
            content,
            u"说明"_s,
            u"工程@机器"_s,
            u"一个标识"_s,
            {{u"L"_s, u"001"_s, u"名"_s, u"m"_s}}};
}

} // namespace

TEST_F(OfficeMemoryFile, RemembersWhenTheOfficeWasSeenLast)
{
    EXPECT_FALSE(Open().LastSeen());
    const QDateTime at(QDate(2026, 2, 3), QTime(4, 5, 6, 7), Qt::UTC);
    Open().RememberSeen(qint64{1} << 40, at);
    Open().RememberSeen((qint64{1} << 40) + 1, at.toLocalTime());
    const auto seen = Open().LastSeen();
    ASSERT_TRUE(seen);
    EXPECT_EQ(seen->revision, (qint64{1} << 40) + 1);
    EXPECT_EQ(seen->at, at);
    EXPECT_EQ(seen->at.timeSpec(), Qt::UTC);
}

TEST_F(OfficeMemoryFile, RemembersTheBaseOfEachConfiguration)
{
    EXPECT_EQ(Open().Base(u"Name"_s), VersionMark());
    Open().RememberBase(u"Name"_s, {4, "four"});
    Open().RememberBase(u"name"_s, {7, "seven"});
    Open().RememberBase(u"Name"_s, {5, QByteArray("fi\0ve", 5)});
    EXPECT_EQ(Open().Base(u"Name"_s), VersionMark(5, QByteArray("fi\0ve", 5)));
    EXPECT_EQ(Open().Base(u"name"_s).number, 7) << "names differ by every character";
    EXPECT_EQ(Open().Base(u"other"_s).number, 0);
}

TEST_F(OfficeMemoryFile, WaitingPublicationsComeBackWholeAndInTheirOrder)
{
    const QByteArray content("<a>\0</a>", 8);
    Open().Wait(Sample(u"一"_s, content));
    Open().Wait({u"二"_s, {}, "b"});
    const CArray<WaitingPublication> waiting = Open().Waiting();
    ASSERT_EQ(waiting.size(), 2);
    const Publication& first = waiting[0].publication;
    EXPECT_EQ(first.configuration, u"一"_s);
    EXPECT_EQ(first.base, VersionMark(3, "digest"));
    EXPECT_EQ(first.projectId, u"一个标识"_s);
    EXPECT_EQ(first.content, content);
    EXPECT_EQ(first.note, u"说明"_s);
    EXPECT_EQ(first.project, u"工程@机器"_s);
    ASSERT_EQ(first.numbers.size(), 1);
    EXPECT_EQ(first.numbers[0].library, u"L"_s);
    EXPECT_EQ(first.numbers[0].number, u"001"_s);
    EXPECT_EQ(first.numbers[0].name, u"名"_s);
    EXPECT_EQ(first.numbers[0].unit, u"m"_s);
    EXPECT_TRUE(waiting[0].since.isValid());
    EXPECT_EQ(waiting[1].publication.configuration, u"二"_s);
    EXPECT_TRUE(waiting[1].publication.numbers.isEmpty());
}

TEST_F(OfficeMemoryFile, NewerStateTakesThePlaceOfTheOneThatWaits)
{
    Open().Wait(Sample(u"一"_s, "old"));
    const WaitingPublication old = Open().Waiting().first();
    Open().Wait(Sample(u"一"_s, "new"));
    Open().Forget(old);
    const CArray<WaitingPublication> waiting = Open().Waiting();
    ASSERT_EQ(waiting.size(), 1) << "the one that was sent is not the one that waits now";
    EXPECT_EQ(waiting[0].publication.content, "new");
    EXPECT_EQ(waiting[0].publication.numbers.size(), 1);
    Open().Forget(waiting[0]);
    EXPECT_TRUE(Open().Waiting().isEmpty());
}

TEST_F(OfficeMemoryFile, WhatIsSentIsRememberedUntilItIsSettled)
{
    Open().RememberSent(u"一"_s, "a");
    Open().RememberSent(u"一"_s, "b");
    Open().RememberSent(u"一"_s, "a");
    Open().RememberSent(u"二"_s, "c");
    EXPECT_EQ(Open().Sent(u"一"_s), (CArray<QByteArray>{"a", "b"}));
    Open().ForgetSent(u"一"_s, "a");
    EXPECT_EQ(Open().Sent(u"一"_s), CArray<QByteArray>{"b"});
    Open().RememberBase(u"一"_s, {2, "b"});
    EXPECT_TRUE(Open().Sent(u"一"_s).isEmpty());
    EXPECT_EQ(Open().Sent(u"二"_s), CArray<QByteArray>{"c"});
}

TEST_F(OfficeMemoryFile, OfAnOlderProgramKeepsWhatItHolds)
{
    MakeFormer();
    OfficeMemory memory = Open();
    ExpectFormer(memory);
    memory.RememberBase(u"一"_s, {5, "five"});
    EXPECT_EQ(memory.Base(u"一"_s), VersionMark(5, "five"));
}

TEST_F(OfficeMemoryFile, OfAnOlderProgramIsReadAsItIsWhereItCannotBeWritten)
{
    if (test::TempFolder::IgnoresPermissions()) GTEST_SKIP() << "this user may write everything";
    MakeFormer();
    const QByteArray before = m_folder.ReadFile(u"office.db"_s);
    m_folder.SetReadOnly(u"office.db"_s, true);
    OfficeMemory memory = Open();
    ExpectFormer(memory);
    const auto refused = [](const std::function<void()>& action) {
        try {
            action();
        } catch (const embedded::ReadOnlyError& error) {
            return error.Message().contains(u"由旧版程序建立"_s);
        }
        return false;
    };
    EXPECT_TRUE(refused([&] { memory.RememberSeen(1, QDateTime::currentDateTimeUtc()); }));
    EXPECT_TRUE(refused([&] { memory.RememberBase(u"一"_s, {5, "five"}); }));
    EXPECT_TRUE(refused([&] { memory.RememberSent(u"一"_s, "a"); }));
    EXPECT_TRUE(refused([&] { memory.Wait(Sample(u"一"_s, "b")); }));
    EXPECT_TRUE(refused([&] { memory.Forget(memory.Waiting().first()); }));
    EXPECT_EQ(m_folder.ReadFile(u"office.db"_s), before);
    m_folder.SetReadOnly(u"office.db"_s, false);
    Open().RememberBase(u"一"_s, {5, "five"});
    EXPECT_EQ(memory.Base(u"一"_s), VersionMark(5, "five")) << "another program has brought it up to date";
}

TEST_F(OfficeMemoryFile, WhatWaitsIsRenewedInItsPlace)
{
    OfficeMemory memory = Open();
    memory.Wait(Sample(u"一"_s, "old"));
    const WaitingPublication waiting = memory.Waiting().first();
    Publication newer = Sample(u"一"_s, "new");
    newer.base = {7, "seven"};
    newer.numbers[0].number = u"002"_s;
    memory.Renew(waiting, newer);
    const CArray<WaitingPublication> renewed = memory.Waiting();
    ASSERT_EQ(renewed.size(), 1);
    EXPECT_EQ(renewed[0].id, waiting.id);
    EXPECT_EQ(renewed[0].since, waiting.since);
    EXPECT_EQ(renewed[0].publication.content, "new");
    EXPECT_EQ(renewed[0].publication.base, VersionMark(7, "seven"));
    ASSERT_EQ(renewed[0].publication.numbers.size(), 1);
    EXPECT_EQ(renewed[0].publication.numbers[0].number, u"002"_s);
    memory.Forget(waiting);
    memory.Renew(waiting, newer);
    EXPECT_TRUE(memory.Waiting().isEmpty());
}

TEST_F(OfficeMemoryFile, OfANewerProgramIsRefused)
{
    Open();
    embedded::Database(m_folder.Path(u"office.db"_s)).SetSchemaVersion(3);
    EXPECT_TRUE(test::ErrorOf([&] { Open(); }).contains(u"更新版本"_s));
}
