#include "embedded/data/office/PublishedConfigurations.h"
#include "office/TwoProjects.h"
#include "shared/OfficeText.h"

using namespace Qt::StringLiterals;
using namespace test; // NOLINT(google-build-using-namespace): all of this is about them
using rules::Side;
using shared::FetchEnd;
using shared::OfficeState;
using shared::PublishEnd;
using shared::WithdrawEnd;

/// What is published where the office, or another program, is not what the project has seen.
using Publishing = test::TwoProjects;

TEST_F(Publishing, VersionThatAnOfficePutBackHasGivenToSomethingElseIsNoBase)
{
    m_li.Write(WithCopper);
    m_li.Publish();
    m_setting.PutBackTo(1);
    OfficeProject third(m_setting, u"三工程"_s, u"li"_s);
    third.Fetch();
    third.Write(WithPlastic);
    ASSERT_EQ(third.Publish().version, 2);
    m_li.Write(PipeFile(PipeElement(2, "钢管") + PipeElement(3, "铜管") + PipeElement(4, "铸铁管")));
    EXPECT_EQ(m_li.Entry().state, OfficeState::Apart);
    const PublishEnd end = m_li.Publish();
    EXPECT_EQ(end.end, PublishEnd::Published);
    EXPECT_EQ(end.version, 3);
    for (const char* material : {"钢管", "铜管", "PE管", "铸铁管"})
        EXPECT_EQ(m_li.Last().count("strValue=\"" + QByteArray(material)), 1) << material;
    EXPECT_EQ(m_li.Read(), m_li.Last());
}

TEST_F(Publishing, WhatAnOfficePutBackHasLostComesBackFromTheProjects)
{
    m_li.Write(WithCopper);
    m_li.Publish();
    m_wang.Fetch();
    m_setting.PutBackTo(1);
    EXPECT_EQ(m_wang.Entry().state, OfficeState::Apart);
    EXPECT_EQ(m_wang.Publish().version, 2);
    EXPECT_EQ(m_wang.Last().count("strValue=\"铜管\""), 1);
    m_setting.PutBackTo(0);
    EXPECT_EQ(m_li.Publish().end, PublishEnd::Missing);
    EXPECT_EQ(m_wang.Publish().version, 1) << "the keeper's";
    EXPECT_EQ(m_wang.Last().count("strValue=\"铜管\""), 1);
}

TEST_F(Publishing, BaseOfAnOlderProgramCountsByItsNumber)
{
    embedded::OfficeMemory& memory = m_li.Host().Office()->Memory();
    memory.RememberBase(Configuration, {1, {}});
    m_li.Write(WithCopper);
    EXPECT_EQ(m_li.Entry().state, OfficeState::Edited);
    const PublishEnd end = m_li.Publish();
    EXPECT_EQ(end.version, 2);
    EXPECT_FALSE(end.IsMerged());
    EXPECT_EQ(memory.Base(Configuration), embedded::VersionMark(2, embedded::DigestOf(WithCopper)));
}

TEST_F(Publishing, PublicationWithoutAnAnswerMayBeDoneAndSaysSo)
{
    m_li.Write(WithCopper);
    {
        const AnswerLost lost(m_setting.Database());
        const PublishEnd end = m_li.Publish();
        EXPECT_EQ(end.end, PublishEnd::Waits);
        EXPECT_TRUE(end.mayBeDone);
        const CString text = shared::EndText(end, u"办"_s);
        EXPECT_TRUE(text.contains(u"可能已经发布"_s)) << text.toStdString();
    }
    ASSERT_EQ(m_li.Files().SendWaiting().size(), 1U);
    EXPECT_EQ(m_li.Last(), WithCopper);
    {
        const AnswerLost lost(m_setting.Database());
        const CString told = ErrorOf([&] { m_li.Files().Restore(Configuration, 1); });
        EXPECT_TRUE(told.contains(u"可能已经完成"_s)) << told.toStdString();
        EXPECT_FALSE(m_li.Host().Office()->Fault().contains(u"可能"_s));
    }
    const ServerDown down;
    m_li.Write(WithPlastic);
    const PublishEnd end = m_li.Publish();
    EXPECT_FALSE(end.mayBeDone) << "nothing was sent";
    EXPECT_TRUE(shared::EndText(end, u"办"_s).contains(u"还没有发布"_s));
}

// The same rule again: what was published unheard of would be the other side of a conflict.
TEST_F(Publishing, EditsOfWhatWasPublishedUnheardOfAreNoConflictWithOneself)
{
    m_li.Write(ByLength);
    PublishUnheard(m_li, ByLength);
    m_li.Write(ByCount);
    EXPECT_EQ(m_li.Entry().state, OfficeState::Edited);
    PublishUnheard(m_li, ByCount);
    const QByteArray third = PipeFile(PipeElement(2, "钢管", "净长"));
    m_li.Write(third);
    const PublishEnd end = m_li.Publish();
    EXPECT_EQ(end.end, PublishEnd::Published);
    EXPECT_EQ(end.version, 4);
    EXPECT_FALSE(end.IsMerged());
    EXPECT_EQ(m_li.Last(), third);
    PublishUnheard(m_li, ByLength);
    m_li.Write(ByCount);
    EXPECT_EQ(m_li.Fetch().end, FetchEnd::Merged);
    EXPECT_EQ(m_li.Read(), ByCount);
}

TEST_F(Publishing, WhatWaitsIsOfWhatWasPublishedUnheardOf)
{
    m_li.Write(ByLength);
    {
        const AnswerLost lost(m_setting.Database());
        EXPECT_TRUE(m_li.Publish().mayBeDone);
    }
    m_li.Write(ByCount);
    {
        const ServerDown down;
        EXPECT_EQ(m_li.Publish().end, PublishEnd::Waits);
    }
    m_li.Reopen();
    ASSERT_TRUE(m_li.Host().Office()->Reach());
    PublishUnheard(m_li, ByLength);
    const auto sent = m_li.Files().SendWaiting();
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent[0].end.version, 3);
    EXPECT_EQ(m_li.Last(), ByCount);
}

// Sent and refused is no version of the project's, even when somebody comes to the same later.
TEST_F(Publishing, RefusedPublicationIsForgotten)
{
    m_wang.Write(ByCount);
    m_wang.Publish();
    m_li.Write(ByLength);
    EXPECT_EQ(m_li.Publish().end, PublishEnd::Conflicts);
    EXPECT_TRUE(m_li.Host().Office()->Memory().Sent(Configuration).isEmpty());
    OfficeProject guest(m_setting, u"客工程"_s, u"gast"_s);
    guest.Fetch();
    guest.Write(WithCopper);
    EXPECT_THROW(guest.Publish(), embedded::RightsError);
    EXPECT_TRUE(guest.Host().Office()->Memory().Sent(Configuration).isEmpty());
}

TEST_F(Publishing, WhatWaitsIsWithdrawnAndTheFileStays)
{
    m_li.Write(WithCopper);
    EXPECT_EQ(m_li.Files().Withdraw(Configuration), WithdrawEnd::NoneWaits);
    {
        const ServerDown down;
        m_li.Publish();
        EXPECT_EQ(m_li.Files().Withdraw(Configuration), WithdrawEnd::Withdrawn);
    }
    EXPECT_TRUE(m_li.Files().SendWaiting().empty());
    EXPECT_EQ(m_li.Read(), WithCopper);
    EXPECT_EQ(m_li.Files().LastVersion(Configuration), 1);
    const AnswerLost lost(m_setting.Database());
    m_li.Publish();
    EXPECT_EQ(m_li.Files().Withdraw(Configuration), WithdrawEnd::MayBeDone);
}

TEST_F(Publishing, RestoreWithdrawsWhatWaits)
{
    const QByteArray published = m_li.Read();
    m_li.Write(ByLength);
    {
        const ServerDown down;
        m_li.Publish();
    }
    m_li.Write(published);
    m_li.Reopen();
    ASSERT_TRUE(m_li.Host().Office()->Reach());
    ASSERT_TRUE(m_li.Entry().isWaiting);
    EXPECT_TRUE(m_li.Files().Restore(Configuration, 1).IsDone());
    EXPECT_FALSE(m_li.Entry().isWaiting);
    EXPECT_TRUE(m_li.Files().SendWaiting().empty());
    EXPECT_EQ(m_li.Read(), published);
}

TEST_F(Publishing, WhatIsSentLateDoesNotPutTheBaseBack)
{
    embedded::OfficeMemory& memory = m_li.Host().Office()->Memory();
    embedded::Publication late;
    late.configuration = Configuration;
    late.base = memory.Base(Configuration);
    late.content = ByLength;
    late.projectId = m_li.Host().Office()->ProjectId();
    m_li.Write(ByLength);
    ASSERT_TRUE(m_li.Publish().IsDone());
    m_wang.Fetch();
    m_wang.Write(ByCount);
    ASSERT_TRUE(m_wang.Publish().IsDone());
    m_li.Fetch();
    const embedded::VersionMark base = memory.Base(Configuration);
    memory.Wait(late); // as if it had waited all the time, and had arrived unheard
    ASSERT_EQ(m_li.Files().SendWaiting().size(), 1U);
    EXPECT_EQ(memory.Base(Configuration), base);
    EXPECT_TRUE(memory.Sent(Configuration).isEmpty());
}

TEST_F(Publishing, FetchWithdrawsWhatWaitsUnlessItIsNotDone)
{
    m_li.Write(ByLength);
    {
        const ServerDown down;
        m_li.Publish();
    }
    m_wang.Write(ByCount);
    m_wang.Publish();
    const FetchEnd refused = m_li.Fetch();
    EXPECT_EQ(refused.end, FetchEnd::Conflicts);
    EXPECT_FALSE(refused.hasWithdrawn);
    EXPECT_TRUE(m_li.Entry().isWaiting);
    const FetchEnd end = m_li.Fetch(AnswerAll(Side::Theirs));
    EXPECT_TRUE(end.hasWithdrawn);
    EXPECT_TRUE(shared::EndText(end, Configuration, u"办"_s).contains(u"已撤回"_s));
    EXPECT_TRUE(m_li.Files().SendWaiting().empty());
    EXPECT_EQ(m_li.Last(), ByCount);
    EXPECT_FALSE(m_li.Fetch().hasWithdrawn);
}

TEST_F(Publishing, WhatAnotherProgramLetsWaitMeanwhileIsKept)
{
    m_wang.Write(ByCount);
    m_wang.Publish();
    m_li.Write(ByLength);
    const PublishEnd end = m_li.Publish({}, [&](const std::vector<rules::Conflict>& conflicts) {
        m_li.Host().Office()->Memory().Wait({Configuration, {}, WithCopper});
        return AnswerAll(Side::Mine)(conflicts);
    });
    EXPECT_EQ(end.end, PublishEnd::Published);
    const auto waiting = m_li.Host().Office()->Memory().Waiting();
    ASSERT_EQ(waiting.size(), 1);
    EXPECT_EQ(waiting[0].publication.content, WithCopper);
}

TEST_F(Publishing, RestoreIsRefusedWhenSomebodyHasPublishedWhatWasNotSeen)
{
    const auto seen = m_li.Files().Log(Configuration).first().Mark();
    m_wang.Write(WithCopper);
    m_wang.Publish();
    m_wang.Write(WithPlastic);
    m_wang.Publish();
    const CString told = ErrorOf([&] { m_li.Files().Restore(Configuration, 2, seen); });
    EXPECT_EQ(told, u"no error"_s) << "that content is there since what was seen";
    m_li.Fetch();
    EXPECT_TRUE(ErrorOf([&] {
                    m_li.Files().Restore(Configuration, 1,
                                         embedded::VersionMark(2, embedded::DigestOf(WithCopper)));
                }).contains(u"刚刚有人发布了"_s));
    EXPECT_EQ(m_li.Last(), WithPlastic);
    EXPECT_EQ(m_li.Read(), WithPlastic);
    EXPECT_EQ(m_li.Files().Restore(Configuration, 1, m_li.Files().Log(Configuration).first().Mark()).version,
              4);
}
