#include "embedded/data/office/PublishedConfigurations.h"
#include "office/TwoProjects.h"
#include "platform/Files.h"
#include "shared/OfficeText.h"

#include <QtCore/QDir>

using namespace Qt::StringLiterals;
using namespace test; // NOLINT(google-build-using-namespace): all of this is about them
using rules::Side;
using shared::FetchEnd;
using shared::JoinedStates;
using shared::OfficeState;
using shared::PublishEnd;
using shared::WithdrawEnd;

/// What is published where the office, or another program, is not what the project has seen.
using Publishing = test::TwoProjects;

namespace {

/// What the project has sent is published, though the project did not hear of it.
void PublishUnheard(OfficeProject& project, const QByteArray& content)
{
    embedded::OfficeMemory& memory = project.Host().Office()->Memory();
    const embedded::VersionMark base = memory.Base(Configuration);
    memory.RememberSent(Configuration, embedded::DigestOf(content));
    const auto outcome = embedded::PublishedConfigurations(*project.Host().Office()->Reached())
                             .Publish({Configuration, base, content});
    ASSERT_EQ(outcome.end, embedded::PublishOutcome::Published);
}

bool IsLocked(const OfficeProject& project)
{
    return !QDir(project.Folder() + u"/history/locks"_s).entryList(QDir::Files | QDir::Hidden).isEmpty();
}

} // namespace

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

TEST_F(Publishing, FileIsFreeForOthersWhileSomebodyIsAskedAndWhatTheyMakeOfItIsMerged)
{
    m_wang.Write(ByCount);
    m_wang.Publish();
    for (const bool isFetch : {true, false}) {
        m_li.Write(ByLength);
        int asked = 0;
        const auto answer = [&](const std::vector<rules::Conflict>& conflicts) {
            EXPECT_FALSE(IsLocked(m_li));
            if (++asked == 1) m_li.Write(PipeFile(PipeElement(2, "钢管", "长度") + PipeElement(3, "铜管")));
            return AnswerAll(Side::Mine)(conflicts);
        };
        if (isFetch)
            EXPECT_EQ(m_li.Fetch(answer).end, FetchEnd::Merged);
        else
            EXPECT_EQ(m_li.Publish({}, answer).end, PublishEnd::Published);
        EXPECT_EQ(asked, isFetch ? 2 : 1);
        EXPECT_TRUE(Holds(m_li.Read(), "长度\"") && Holds(m_li.Read(), "铜管")) << m_li.Read().toStdString();
        m_li.Files().Fetch(Configuration, AnswerAll(Side::Theirs), 1);
    }
}

TEST_F(Publishing, WhatWasMergedIsShownBeforeItIsPublished)
{
    m_wang.Write(WithCopper);
    m_wang.Publish();
    m_li.Write(WithPlastic);
    JoinedStates shown;
    bool isWanted = false;
    const auto review = [&](const JoinedStates& joined) {
        EXPECT_FALSE(IsLocked(m_li));
        EXPECT_EQ(m_li.Files().LastVersion(Configuration), 2);
        shown = joined;
        return isWanted;
    };
    const PublishEnd declined = m_li.Publish({}, {}, review);
    EXPECT_EQ(declined.end, PublishEnd::Declined);
    EXPECT_TRUE(shared::EndText(declined, u"办"_s).contains(u"没有发布"_s));
    EXPECT_FALSE(declined.IsMerged());
    EXPECT_EQ(m_li.Read(), WithPlastic);
    EXPECT_EQ(m_li.Last(), WithCopper);
    EXPECT_EQ(shown.version, 2);
    EXPECT_EQ(shown.mine, WithPlastic);
    EXPECT_EQ(shown.theirs, WithCopper);
    EXPECT_TRUE(shared::JoinedText(shown).contains(u"铜管"_s)) << shared::JoinedText(shown).toStdString();
    EXPECT_FALSE(shared::JoinedText(shown).contains(u"PE管"_s));
    isWanted = true;
    const PublishEnd end = m_li.Publish({}, {}, review);
    EXPECT_EQ(end.end, PublishEnd::Published);
    ASSERT_TRUE(end.IsMerged());
    EXPECT_EQ(end.joined->merged, m_li.Last());
    EXPECT_EQ(shown.merged, m_li.Last());
}

TEST_F(Publishing, WhatWaitsAndNobodyWantsToSeeMergedGoesOnWaiting)
{
    m_li.Write(WithPlastic);
    {
        const ServerDown down;
        m_li.Publish();
    }
    m_wang.Write(WithCopper);
    m_wang.Publish();
    const auto sent = m_li.Files().SendWaiting({}, [](const JoinedStates&) { return false; });
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent[0].end.end, PublishEnd::Declined);
    EXPECT_TRUE(shared::EndText(sent[0], u"办"_s).contains(u"还在等"_s));
    EXPECT_TRUE(m_li.Entry().isWaiting);
    EXPECT_EQ(m_li.Read(), WithPlastic);
    EXPECT_EQ(m_li.Last(), WithCopper);
}

TEST_F(Publishing, MergeThatBringsNothingOfOnesOwnIsNotShown)
{
    m_wang.Write(WithCopper);
    m_wang.Publish();
    const PublishEnd end = m_li.Publish({}, {}, [](const JoinedStates&) {
        ADD_FAILURE() << "shown";
        return true;
    });
    EXPECT_EQ(end.end, PublishEnd::Unchanged);
}

TEST_F(Publishing, WhatAMergeHasJoinedIsToldThoughItsPublicationIsNotAnswered)
{
    m_li.Write(WithPlastic);
    {
        const AnswerLost lost(m_setting.Database());
        EXPECT_FALSE(m_li.Publish().IsMerged());
    }
    m_wang.Write(WithCopper);
    m_wang.Publish();
    PublishEnd end;
    {
        const AnswerLost lost(m_setting.Database());
        end = m_li.Publish();
    }
    EXPECT_EQ(end.end, PublishEnd::Waits);
    EXPECT_TRUE(end.mayBeDone);
    ASSERT_TRUE(end.IsMerged());
    EXPECT_EQ(end.joined->version, 2);
    EXPECT_EQ(end.joined->mine, WithPlastic);
    EXPECT_EQ(end.joined->merged, m_li.Read());
    const CString text = shared::EndText(end, u"办"_s);
    EXPECT_TRUE(text.contains(u"本地文件已与别人发布的第 2 版合并"_s) && text.contains(u"可能已经发布"_s))
        << text.toStdString();
}

TEST_F(Publishing, WhatWaitedIsToldAsMergedThoughItIsNotAnsweredAndUndoesNothingLater)
{
    m_li.Write(WithPlastic);
    {
        const ServerDown down;
        m_li.Publish();
    }
    m_wang.Write(WithCopper);
    m_wang.Publish();
    {
        const AnswerLost lost(m_setting.Database());
        const auto sent = m_li.Files().SendWaiting();
        ASSERT_EQ(sent.size(), 1U);
        EXPECT_TRUE(sent[0].end.mayBeDone);
        ASSERT_TRUE(sent[0].end.IsMerged());
        EXPECT_EQ(sent[0].end.joined->merged, m_li.Read());
        const CString text = shared::EndText(sent[0], u"办"_s);
        for (const CString& part : {u"还在等"_s, u"第 2 版合并"_s, u"可能已经发布"_s})
            EXPECT_TRUE(text.contains(part)) << text.toStdString();
    }
    // As if it had arrived.
    const QByteArray merged = m_li.Read();
    ASSERT_TRUE(m_li.Host().Office()->Reach());
    PublishUnheard(m_li, merged);
    const auto sent = m_li.Files().SendWaiting();
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent[0].end.version, 3);
    EXPECT_EQ(m_li.Last(), merged) << "with what others had published";
}

// A program that ends before the answer leaves what it has sent and what waited before that.
TEST_F(Publishing, WhatWaitsIsNotOlderThanWhatWasSent)
{
    m_li.Write(WithPlastic);
    {
        const ServerDown down;
        m_li.Publish();
    }
    ASSERT_TRUE(m_li.Host().Office()->Reach());
    m_wang.Write(WithCopper);
    m_wang.Publish();
    int shown = 0;
    m_li.Publish({}, {}, [&](const JoinedStates& joined) {
        const auto waiting = m_li.Host().Office()->Memory().Waiting();
        EXPECT_EQ(waiting.size(), 1);
        EXPECT_EQ(waiting.first().publication.content, joined.mine);
        EXPECT_EQ(waiting.first().publication.base.number, joined.version - 1);
        if (++shown > 1) return false;
        m_wang.Write(PipeFile(PipeElement(2, "钢管") + PipeElement(3, "铜管") + PipeElement(4, "铸铁管")));
        m_wang.Publish();
        return true;
    });
    EXPECT_EQ(shown, 2);
}

TEST_F(Publishing, WhatIsNotWantedDoesNotTakeThePlaceOfWhatWaits)
{
    m_li.Write(WithPlastic);
    {
        const ServerDown down;
        m_li.Publish();
    }
    ASSERT_TRUE(m_li.Host().Office()->Reach());
    m_wang.Write(WithCopper);
    m_wang.Publish();
    m_li.Write(PipeFile(PipeElement(2, "钢管") + PipeElement(3, "铸铁管")));
    const PublishEnd end = m_li.Publish({}, {}, [](const JoinedStates&) { return false; });
    EXPECT_EQ(end.end, PublishEnd::Declined);
    const auto waiting = m_li.Host().Office()->Memory().Waiting();
    ASSERT_EQ(waiting.size(), 1);
    EXPECT_EQ(waiting.first().publication.content, WithPlastic);
}

TEST_F(Publishing, MergeOfWhatWasPublishedDuringAReviewIsToldAsTheSecondOne)
{
    m_wang.Write(WithCopper);
    m_wang.Publish();
    m_li.Write(WithPlastic);
    CArray<JoinedStates> shown;
    const PublishEnd end = m_li.Publish({}, {}, [&](const JoinedStates& joined) {
        shown.append(joined);
        if (shown.size() > 1) return false;
        m_wang.Write(PipeFile(PipeElement(2, "钢管") + PipeElement(3, "铜管") + PipeElement(4, "铸铁管")));
        EXPECT_EQ(m_wang.Publish().version, 3);
        return true;
    });
    ASSERT_EQ(shown.size(), 2);
    EXPECT_EQ(shown[0].before, 0);
    EXPECT_EQ(shown[1].before, 2);
    EXPECT_EQ(shown[1].version, 3);
    EXPECT_EQ(shown[1].mine, shown[0].merged);
    EXPECT_EQ(m_li.Read(), shown[0].merged);
    EXPECT_EQ(end.end, PublishEnd::Declined);
    ASSERT_TRUE(end.IsMerged()) << "once";
    const CString text = shared::EndText(end, u"办"_s);
    EXPECT_TRUE(text.contains(u"本地文件已与别人发布的第 2 版合并"_s) &&
                text.contains(u"第 3 版合并的结果"_s))
        << text.toStdString();
}
