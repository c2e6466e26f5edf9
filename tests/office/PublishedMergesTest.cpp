#include "office/TwoProjects.h"
#include "shared/OfficeText.h"

#include <QtCore/QDir>

using namespace Qt::StringLiterals;
using namespace test; // NOLINT(google-build-using-namespace): all of this is about them
using rules::Side;
using shared::FetchEnd;
using shared::JoinedStates;
using shared::PublishEnd;

/// What is merged with what others have published: what is shown, asked and told of it.
using Publishing = test::TwoProjects;

namespace {

bool IsLocked(const OfficeProject& project)
{
    return !QDir(project.Folder() + u"/history/locks"_s).entryList(QDir::Files | QDir::Hidden).isEmpty();
}

} // namespace

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
    LetPlasticWaitWhileCopperIsPublished();
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
    LetPlasticWaitWhileCopperIsPublished();
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
