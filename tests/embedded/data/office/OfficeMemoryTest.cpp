#include "embedded/data/office/OfficeMemory.h"

#include "embedded/TestProject.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::OfficeMemory;
using embedded::Publication;
using embedded::WaitingPublication;

namespace {

class OfficeMemoryFile : public ::testing::Test
{
protected:
    OfficeMemory Open() { return OfficeMemory(m_folder.Path(u"office.db"_s)); }

    test::TempFolder m_folder;
};

Publication Sample(const CString& configuration, const QByteArray& content)
{
    return {configuration, 3, content, u"说明"_s, u"工程@机器"_s, {{u"L"_s, u"001"_s, u"名"_s, u"m"_s}}};
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
    EXPECT_EQ(Open().Base(u"Name"_s), 0);
    Open().RememberBase(u"Name"_s, 4);
    Open().RememberBase(u"name"_s, 7);
    Open().RememberBase(u"Name"_s, 5);
    EXPECT_EQ(Open().Base(u"Name"_s), 5);
    EXPECT_EQ(Open().Base(u"name"_s), 7) << "names differ by every character";
    EXPECT_EQ(Open().Base(u"other"_s), 0);
}

TEST_F(OfficeMemoryFile, WaitingPublicationsComeBackWholeAndInTheirOrder)
{
    const QByteArray content("<a>\0</a>", 8);
    Open().Wait(Sample(u"一"_s, content));
    Open().Wait({u"二"_s, 0, "b"});
    const CArray<WaitingPublication> waiting = Open().Waiting();
    ASSERT_EQ(waiting.size(), 2);
    const Publication& first = waiting[0].publication;
    EXPECT_EQ(first.configuration, u"一"_s);
    EXPECT_EQ(first.base, 3);
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

TEST_F(OfficeMemoryFile, OfANewerProgramIsRefused)
{
    Open();
    embedded::Database(m_folder.Path(u"office.db"_s)).SetSchemaVersion(2);
    EXPECT_TRUE(test::ErrorOf([&] { Open(); }).contains(u"更新版本"_s));
}
