#include "shared/OfficeFiles.h"

#include "office/TwoProjects.h"
#include "platform/Files.h"

using namespace Qt::StringLiterals;
using rules::Side;
using shared::FetchEnd;
using shared::OfficeState;
using shared::PublishEnd;
using namespace test; // NOLINT(google-build-using-namespace): all of this is about them

using OfficeFiles = test::TwoProjects;

TEST_F(OfficeFiles, PublishedFileIsFetchedToTheByte)
{
    EXPECT_EQ(m_li.Read(), Base);
    EXPECT_EQ(m_li.Entry().state, OfficeState::Same);
    EXPECT_EQ(m_li.Entry().base, 1);
    EXPECT_EQ(m_li.Fetch().end, FetchEnd::Unchanged);
    const auto log = m_li.Files().Log(Configuration);
    ASSERT_EQ(log.size(), 1);
    EXPECT_EQ(log[0].note, u"第一版"_s);
    EXPECT_TRUE(log[0].project.startsWith(u"王工程"_s)) << log[0].project.toStdString();
}

TEST_F(OfficeFiles, WhatOthersHavePublishedMeanwhileIsMergedIntoFileAndVersion)
{
    m_wang.Write(WithCopper);
    EXPECT_EQ(m_wang.Publish().version, 2);
    m_li.Write(WithPlastic);
    const PublishEnd end = m_li.Publish(u"塑料管"_s);
    EXPECT_EQ(end.end, PublishEnd::Published);
    EXPECT_TRUE(end.IsMerged());
    EXPECT_EQ(end.version, 3);
    const QByteArray last = m_wang.Last();
    EXPECT_TRUE(Holds(last, "铜管") && Holds(last, "PE管")) << last.toStdString();
    EXPECT_EQ(m_li.Read(), last);
    EXPECT_EQ(m_li.Host().History().ListAll().size(), 1);
    EXPECT_EQ(m_li.Host().History().Read(m_li.Host().History().ListAll().first()), WithPlastic);
    EXPECT_EQ(m_li.Entry().state, OfficeState::Same);
    EXPECT_EQ(m_wang.Entry().state, OfficeState::Older);
    EXPECT_EQ(m_wang.Fetch().end, FetchEnd::Fetched);
    EXPECT_EQ(m_wang.Read(), last);
}

TEST_F(OfficeFiles, ConflictWithoutAnAnswerPublishesNothingAndLeavesTheFile)
{
    m_wang.Write(ByCount);
    m_wang.Publish();
    m_li.Write(ByLength);
    int asked = 0;
    const PublishEnd end = m_li.Publish({}, [&](const std::vector<rules::Conflict>& conflicts) {
        asked += static_cast<int>(conflicts.size());
        return std::optional<std::vector<Side>>();
    });
    EXPECT_EQ(end.end, PublishEnd::Conflicts);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(m_li.Read(), ByLength);
    EXPECT_EQ(m_li.Last(), ByCount);
    EXPECT_EQ(m_li.Entry().state, OfficeState::OlderEdited);
}

TEST_F(OfficeFiles, AnswerDecidesAConflict)
{
    m_wang.Write(ByCount);
    m_wang.Publish();
    m_li.Write(ByLength);
    EXPECT_EQ(m_li.Publish({}, AnswerAll(Side::Mine)).version, 3);
    EXPECT_TRUE(Holds(m_wang.Last(), "长度"));
    m_wang.Write(PipeFile(PipeElement(2, "钢管", "净长")));
    EXPECT_EQ(m_wang.Publish({}, AnswerAll(Side::Theirs)).end, PublishEnd::Unchanged);
    EXPECT_EQ(m_wang.Read(), m_li.Read());
}

TEST_F(OfficeFiles, FetchMergesWithEditsAndAsksWhereTheyConflict)
{
    m_wang.Write(WithCopper);
    m_wang.Publish();
    m_li.Write(WithPlastic);
    EXPECT_EQ(m_li.Fetch().end, FetchEnd::Merged);
    EXPECT_TRUE(Holds(m_li.Read(), "铜管") && Holds(m_li.Read(), "PE管"));
    EXPECT_EQ(m_li.Entry().state, OfficeState::Edited);
    EXPECT_EQ(m_li.Publish().version, 3);
}

TEST_F(OfficeFiles, FetchWithoutAnAnswerLeavesTheFile)
{
    m_wang.Write(ByCount);
    m_wang.Publish();
    m_li.Write(ByLength);
    EXPECT_EQ(m_li.Fetch().end, FetchEnd::Conflicts);
    EXPECT_EQ(m_li.Read(), ByLength);
    EXPECT_EQ(m_li.Entry().base, 1);
    EXPECT_EQ(m_li.Fetch(AnswerAll(Side::Theirs)).end, FetchEnd::Fetched);
    EXPECT_EQ(m_li.Read(), ByCount);
}

// A default rule that each side's program has made is nothing that both have added.
TEST_F(OfficeFiles, FileMadeApartKeepsItsRulesWhenItMeetsThePublishedOne)
{
    OfficeProject third(m_setting, u"三工程"_s, u"li"_s);
    third.Write(PipeFile(PipeElement(2, "铜管")));
    EXPECT_EQ(third.Entry().state, OfficeState::Apart);
    const PublishEnd end = third.Publish();
    EXPECT_EQ(end.end, PublishEnd::Published);
    EXPECT_TRUE(end.IsMerged());
    EXPECT_TRUE(Holds(third.Last(), "铜管") && Holds(third.Last(), "钢管")) << third.Last().toStdString();
    OfficeProject fourth(m_setting, u"四工程"_s, u"li"_s);
    fourth.Write(PipeFile({}));
    EXPECT_EQ(fourth.Fetch().end, FetchEnd::Fetched);
    EXPECT_EQ(fourth.Read(), third.Last());
}

TEST_F(OfficeFiles, PublishingTheSameTwiceMakesNoVersion)
{
    EXPECT_EQ(m_wang.Publish().end, PublishEnd::Unchanged);
    EXPECT_EQ(m_li.Publish().end, PublishEnd::Unchanged);
    EXPECT_EQ(m_li.Files().LastVersion(Configuration), 1);
}

TEST_F(OfficeFiles, RestoreBringsAnEarlierVersionBackAsANewOne)
{
    m_li.Write(WithCopper);
    m_li.Publish();
    const PublishEnd end = m_li.Files().Restore(Configuration, 1);
    EXPECT_EQ(end.end, PublishEnd::Published);
    EXPECT_EQ(end.version, 3);
    EXPECT_EQ(m_li.Last(), Base);
    EXPECT_EQ(m_li.Read(), Base);
    EXPECT_EQ(m_li.Files().Log(Configuration).first().note, u"还原第 1 版"_s);
    EXPECT_EQ(m_li.Host().History().Read(m_li.Host().History().ListAll().first()), WithCopper);
    EXPECT_EQ(m_li.Entry().state, OfficeState::Same);
}

TEST_F(OfficeFiles, RestoreIsRefusedWhereItWouldLoseEdits)
{
    m_li.Write(WithCopper);
    m_li.Publish();
    m_li.Write(WithPlastic);
    EXPECT_TRUE(ErrorOf([&] { m_li.Files().Restore(Configuration, 1); }).contains(u"还没有发布的修改"_s));
    EXPECT_EQ(m_li.Read(), WithPlastic);
    EXPECT_EQ(m_li.Last(), WithCopper);
}

TEST_F(OfficeFiles, EarlierVersionIsFetchedAndDoesNotReplaceTheLastWhenPublished)
{
    m_li.Write(WithCopper);
    m_li.Publish();
    EXPECT_EQ(m_li.Files().Fetch(Configuration, {}, 1).end, FetchEnd::Fetched);
    EXPECT_EQ(m_li.Read(), Base);
    EXPECT_EQ(m_li.Entry().state, OfficeState::Older);
    EXPECT_EQ(m_li.Publish().end, PublishEnd::Unchanged);
    EXPECT_EQ(m_li.Last(), WithCopper);
    m_li.Write(WithPlastic);
    EXPECT_TRUE(m_li.Publish().IsMerged());
    EXPECT_TRUE(Holds(m_li.Last(), "铜管") && Holds(m_li.Last(), "PE管"));
}

TEST_F(OfficeFiles, PublicationWaitsForTheServerAndIsSentThen)
{
    m_li.Write(WithCopper);
    {
        const ServerDown down;
        const PublishEnd end = m_li.Publish(u"铜管"_s);
        EXPECT_EQ(end.end, PublishEnd::Waits);
        EXPECT_FALSE(end.fault.isEmpty());
        const shared::OfficeEntry entry = m_li.Entry();
        EXPECT_TRUE(entry.isWaiting);
        EXPECT_EQ(entry.state, OfficeState::Unknown);
        EXPECT_TRUE(m_li.Files().SendWaiting().empty());
        m_li.Reopen(); // what waits does not end with the program
        EXPECT_TRUE(m_li.Entry().isWaiting);
    }
    const auto sent = m_li.Files().SendWaiting();
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent[0].end.end, PublishEnd::Published);
    EXPECT_EQ(m_wang.Last(), WithCopper);
    EXPECT_EQ(m_wang.Files().Log(Configuration).first().note, u"铜管"_s);
    EXPECT_FALSE(m_li.Entry().isWaiting);
    EXPECT_EQ(m_li.Entry().state, OfficeState::Same);
    EXPECT_TRUE(m_li.Files().SendWaiting().empty());
}

TEST_F(OfficeFiles, WhatWaitsIsMergedWithOthersAndWithLaterEdits)
{
    m_li.Write(WithCopper);
    {
        const ServerDown down;
        EXPECT_EQ(m_li.Publish().end, PublishEnd::Waits);
    }
    m_wang.Write(WithPlastic);
    m_wang.Publish();
    m_li.Write(PipeFile(PipeElement(2, "钢管") + PipeElement(3, "铜管") + PipeElement(4, "铸铁管")));
    const auto sent = m_li.Files().SendWaiting();
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_TRUE(sent[0].end.IsMerged());
    EXPECT_TRUE(Holds(m_wang.Last(), "铜管") && Holds(m_wang.Last(), "PE管"));
    EXPECT_FALSE(Holds(m_wang.Last(), "铸铁管"));
    for (const char* material : {"铜管", "PE管", "铸铁管"})
        EXPECT_TRUE(Holds(m_li.Read(), material)) << m_li.Read().toStdString();
    EXPECT_EQ(m_li.Entry().state, OfficeState::Edited);
}

TEST_F(OfficeFiles, WhatWaitsAndConflictsStaysWaitingUntilItIsAnswered)
{
    m_li.Write(ByLength);
    {
        const ServerDown down;
        EXPECT_EQ(m_li.Publish().end, PublishEnd::Waits);
    }
    m_wang.Write(ByCount);
    m_wang.Publish();
    const auto sent = m_li.Files().SendWaiting();
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent[0].end.end, PublishEnd::Conflicts);
    EXPECT_TRUE(m_li.Entry().isWaiting);
    EXPECT_EQ(m_li.Read(), ByLength);
    EXPECT_EQ(m_li.Publish({}, AnswerAll(Side::Mine)).end, PublishEnd::Published);
    EXPECT_FALSE(m_li.Entry().isWaiting);
    EXPECT_TRUE(Holds(m_wang.Last(), "长度"));
}

TEST_F(OfficeFiles, ReaderIsRefusedAndNothingWaits)
{
    OfficeProject guest(m_setting, u"客工程"_s, u"gast"_s);
    EXPECT_EQ(guest.Fetch().end, FetchEnd::Fetched);
    guest.Write(WithCopper);
    EXPECT_THROW(guest.Publish(), embedded::RightsError);
    EXPECT_THROW(guest.Files().Remove(Configuration), embedded::RightsError);
    EXPECT_EQ(guest.Last(), Base);
    EXPECT_EQ(guest.Read(), WithCopper);
    EXPECT_FALSE(guest.Entry().isWaiting);
}

TEST_F(OfficeFiles, NewConfigurationIsTheMatterOfAKeeper)
{
    const CString name = u"另一个"_s;
    platform::Files().WriteInPlace(m_li.Files().FileOf(name), Base);
    EXPECT_EQ(m_li.Files().Publish(name, {}, {}).end, PublishEnd::Missing);
    platform::Files().WriteInPlace(m_wang.Files().FileOf(name), Base);
    EXPECT_EQ(m_wang.Files().Publish(name, {}, {}).version, 1);
}

TEST_F(OfficeFiles, RemovedConfigurationIsNotPublishedUntilItIsBack)
{
    m_wang.Files().Remove(Configuration);
    EXPECT_EQ(m_li.Entry().state, OfficeState::Unpublished);
    m_li.Write(WithCopper);
    EXPECT_EQ(m_li.Publish().end, PublishEnd::Missing);
    m_wang.Files().BringBack(Configuration);
    EXPECT_EQ(m_li.Publish().version, 2);
}

TEST_F(OfficeFiles, NumberThatAnotherProjectHasGivenToSomethingElseIsRefusedWithItsName)
{
    const QByteArray number = "strQdId=\"031001001001\" strQdCode=\"GB50856-2013\" strName=";
    const auto numbered = [&](const QByteArray& material, const QByteArray& name) {
        QByteArray rule = PipeElement(3, material);
        return PipeFile(PipeElement(2, "钢管") + rule.replace("strQdId=\"031001001\" strName=\"镀锌钢管\"",
                                                              number + '"' + name + '"'));
    };
    m_wang.Write(numbered("铜管", "铜管"));
    EXPECT_EQ(m_wang.Publish().version, 2);
    m_li.Write(numbered("PE管", "塑料管"));
    const PublishEnd end = m_li.Publish();
    EXPECT_EQ(end.end, PublishEnd::Collides);
    ASSERT_EQ(end.collisions.size(), 1);
    EXPECT_EQ(end.collisions[0].mine.number, u"031001001001"_s);
    EXPECT_EQ(end.collisions[0].theirs.name, u"铜管"_s);
    EXPECT_TRUE(end.collisions[0].project.startsWith(u"王工程"_s)) << end.collisions[0].project.toStdString();
    EXPECT_EQ(m_li.Files().LastVersion(Configuration), 2);
}

// A program that ends between the server's commit and its own note leaves an older base behind.
TEST_F(OfficeFiles, ForgottenBaseIsFoundAgainByTheContent)
{
    m_li.Write(ByLength);
    m_li.Publish();
    m_wang.Fetch();
    m_wang.Write(PipeFile(PipeElement(2, "钢管", "净长")));
    m_wang.Publish();
    embedded::OfficeMemory& memory = m_li.Host().Office()->Memory();
    const embedded::VersionMark first(1, embedded::DigestOf(Base));
    memory.RememberBase(Configuration, first);
    EXPECT_EQ(m_li.Entry().state, OfficeState::Older);
    EXPECT_EQ(memory.Base(Configuration).number, 2);
    memory.RememberBase(Configuration, first);
    EXPECT_EQ(m_li.Publish().end, PublishEnd::Unchanged);
    EXPECT_EQ(memory.Base(Configuration).number, 2);
    memory.RememberBase(Configuration, first);
    EXPECT_EQ(m_li.Fetch().end, FetchEnd::Fetched);
    EXPECT_EQ(m_li.Read(), m_wang.Read());
}

TEST_F(OfficeFiles, WhatIsNoRuleFileIsNeitherPublishedNorReplaced)
{
    m_li.Write("no xml");
    m_wang.Write(WithCopper);
    m_wang.Publish();
    EXPECT_NE(ErrorOf([&] { m_li.Publish(); }), u"no error"_s);
    EXPECT_NE(ErrorOf([&] { m_li.Fetch(); }), u"no error"_s);
    EXPECT_EQ(m_li.Read(), "no xml");
    EXPECT_EQ(m_li.Last(), WithCopper);
}

TEST_F(OfficeFiles, ListNamesWhatOnlyOneSideHas)
{
    platform::Files().WriteInPlace(m_li.Files().FileOf(u"自己的"_s), Base);
    OfficeProject third(m_setting, u"三工程"_s, u"gast"_s);
    EXPECT_EQ(third.Entry().state, OfficeState::Missing);
    const auto entries = m_li.Files().List();
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries[1].configuration, u"自己的"_s);
    EXPECT_EQ(entries[1].state, OfficeState::Unpublished);
    EXPECT_FALSE(entries[1].last);
}

TEST_F(OfficeFiles, WhatIsNotThereIsToldByName)
{
    EXPECT_TRUE(ErrorOf([&] { m_li.Files().Fetch(u"没有的"_s, {}); }).contains(u"没有的"_s));
    EXPECT_TRUE(ErrorOf([&] { m_li.Files().Log(u"没有的"_s); }).contains(u"没有的"_s));
    EXPECT_TRUE(ErrorOf([&] { m_li.Files().Content(Configuration, 7); }).contains(u"第 7 版"_s));
    EXPECT_TRUE(ErrorOf([&] { static_cast<void>(m_li.Files().FileOf(u"a\\b"_s)); }).contains(u"a\\b"_s));
}
