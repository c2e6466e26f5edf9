#include "rules/bill/IdCheck.h"

#include "platform/Files.h"
#include "support/PrintText.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// Which of the ids 0 to `count` - 1, every `step`th of them twice, are found to come twice: how many hashes.
std::size_t Found(std::size_t memory, int count, int step)
{
    rules::HashedIds ids(memory);
    for (int i = 0; i < count; ++i)
        EXPECT_TRUE(ids.IsNew(QString::number(i)));
    for (int i = 0; i < count; i += step)
        EXPECT_TRUE(ids.IsNew(QString::number(i)));
    return ids.Repeated().size();
}

} // namespace

TEST(EveryId, TakesEachOnce)
{
    rules::EveryId ids;
    EXPECT_TRUE(ids.IsNew(u"a"));
    EXPECT_TRUE(ids.IsNew(u"A"));
    EXPECT_FALSE(ids.IsNew(u"a"));
}

TEST(HashedIds, FindsThoseThatComeTwiceInMemoryAndOnDisk)
{
    EXPECT_EQ(Found(1 << 20, 10'000, 10), 1'000U);
    EXPECT_EQ(Found(1'000, 10'000, 10), 1'000U) << "in eleven runs of a temporary file";
    EXPECT_EQ(Found(1, 300, 3), 100U) << "a run for each";
    EXPECT_EQ(rules::HashedIds().Repeated().size(), 0U);
}

TEST(HashedIds, TemporaryFileThatCannotBeMadeIsAFileError)
{
    const test::TempFolder folder;
    const bool wasSet = qEnvironmentVariableIsSet("TMPDIR");
    const QByteArray before = qgetenv("TMPDIR");
    folder.WriteFile(u"file"_s, {});
    qputenv("TMPDIR", folder.Native(u"file"_s).toUtf8());
    rules::HashedIds ids(1);
    EXPECT_TRUE(ids.IsNew(u"a"));
    EXPECT_THROW(ids.IsNew(u"b"), platform::FileError);
    wasSet ? qputenv("TMPDIR", before) : qunsetenv("TMPDIR");
}

TEST(SuspectedIds, RefusesTheSecondOfThoseAloneThatCameTwice)
{
    rules::HashedIds hashed(4);
    for (const QString& id : {u"a"_s, u"b"_s, u"a"_s, u"c"_s, u"a"_s, u"c"_s})
        hashed.IsNew(id);
    rules::SuspectedIds ids(hashed.Repeated());
    QList<bool> isNew;
    for (const QString& id : {u"a"_s, u"b"_s, u"a"_s, u"c"_s, u"a"_s, u"c"_s})
        isNew.append(ids.IsNew(id));
    EXPECT_EQ(isNew, (QList<bool>{true, true, false, true, false, false}));
    EXPECT_TRUE(ids.IsNew(u"b")) << "no suspicion, so nothing is remembered of it";
}

TEST(SuspectedIds, HashesThatAreTheSameByChanceRefuseNothing)
{
    // All are suspected, as if their hashes were those of others: what counts are the texts.
    rules::HashedIds hashed;
    for (int twice = 0; twice < 2; ++twice)
        for (int i = 0; i < 100; ++i)
            hashed.IsNew(QString::number(i));
    rules::SuspectedIds ids(hashed.Repeated());
    for (int i = 0; i < 100; ++i)
        EXPECT_TRUE(ids.IsNew(QString::number(i)));
    EXPECT_FALSE(ids.IsNew(u"7"));
}
