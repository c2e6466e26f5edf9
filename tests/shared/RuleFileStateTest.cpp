#include "shared/RuleFileState.h"

#include "store/RuleFile.h"
#include "store/WrappedFile.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using shared::RuleFileKind;
using shared::RuleFileState;

namespace {

class RuleFileStateTest : public ::testing::Test
{
protected:
    shared::RuleFileState Examine(const QByteArray& bytes) const
    {
        return shared::ExamineRuleFile(m_folder.WriteFile(u"my.rules.xml"_s, bytes));
    }

    test::TempFolder m_folder;
};

} // namespace

TEST_F(RuleFileStateTest, RuleFileIsSafe)
{
    const shared::RuleFileState state = Examine('<' + store::RootName().toUtf8() + "/>");
    EXPECT_EQ(state.kind, shared::RuleFileKind::Rules);
    EXPECT_TRUE(state.IsSafe());
    EXPECT_EQ(state.Name(), u"my.rules"_s);
}

TEST_F(RuleFileStateTest, MissingFileIsSafe)
{
    const shared::RuleFileState state = shared::ExamineRuleFile(m_folder.Path(u"none.xml"_s));
    EXPECT_EQ(state.kind, shared::RuleFileKind::Missing);
    EXPECT_TRUE(state.IsSafe());
}

TEST_F(RuleFileStateTest, DamagedFileTellsLineColumnAndReason)
{
    const shared::RuleFileState state = Examine("<a>\n  <b x=\"1\" x=\"2\"/>\n</a>");
    EXPECT_EQ(state.kind, shared::RuleFileKind::Unreadable);
    EXPECT_FALSE(state.IsSafe());
    EXPECT_EQ(state.reason.line, 2);
    EXPECT_GT(state.reason.column, 1);
    EXPECT_TRUE(state.Describe().startsWith(u"读不了：第 2 行第 %1 列，"_s.arg(state.reason.column)));
    EXPECT_TRUE(state.Describe().endsWith(state.reason.text));
    EXPECT_FALSE(state.reason.text.isEmpty());
}

TEST_F(RuleFileStateTest, AnotherDocumentElementIsForeign)
{
    const shared::RuleFileState state = Examine("<other/>");
    EXPECT_EQ(state.kind, shared::RuleFileKind::Foreign);
    EXPECT_FALSE(state.IsSafe());
}

TEST_F(RuleFileStateTest, FinishedFileIsWrapped)
{
    store::WrappedFile file;
    file.format = u"5"_s;
    file.mode = u"清单模式"_s;
    file.content = "<a/>";
    QByteArray bytes;
    for (const QByteArray& field : store::ComposeFields(file))
        bytes += field;
    const shared::RuleFileState state = Examine(bytes);
    EXPECT_EQ(state.kind, shared::RuleFileKind::Wrapped);
    EXPECT_FALSE(state.IsSafe());
}

TEST_F(RuleFileStateTest, ReadableAndMissingFilesHaveNoReason)
{
    EXPECT_TRUE(Examine('<' + store::RootName().toUtf8() + "><a/></" + store::RootName().toUtf8() + '>')
                    .reason.text.isEmpty());
    EXPECT_TRUE(shared::ExamineRuleFile(m_folder.Path(u"none.xml"_s)).reason.text.isEmpty());
}

TEST_F(RuleFileStateTest, EmptyFileIsNotSafe)
{
    const RuleFileState state = Examine(QByteArray());
    EXPECT_EQ(state.kind, RuleFileKind::Unreadable);
    EXPECT_FALSE(state.reason.text.isEmpty());
}

TEST_F(RuleFileStateTest, ForeignDocumentElementIsAReasonWithoutAPlace)
{
    const RuleFileState state = Examine("<html/>");
    EXPECT_EQ(state.reason.line, 0);
    EXPECT_TRUE(state.reason.text.contains(store::RootName()));
    EXPECT_EQ(state.Describe(), state.reason.text);
}

TEST_F(RuleFileStateTest, FinishedFileTellsWhereItCeasesToBeXml)
{
    store::WrappedFile file;
    file.content = "<a/>";
    QByteArray bytes;
    for (const QByteArray& field : store::ComposeFields(file))
        bytes += field;
    EXPECT_FALSE(Examine(bytes).reason.text.isEmpty());
}

TEST_F(RuleFileStateTest, SpecialtyThatStandsTwiceIsToldAndOnlyTheFirstStays)
{
    const QByteArray root = store::RootName().toUtf8();
    const CString path = m_folder.WriteFile(
        u"my.rules.xml"_s,
        "<" + root + "><a name=\"A\" x=\"first\"/><b name=\"B\"/><a name=\"A\" x=\"2\"/></" + root + ">");
    const shared::RuleFileState state = shared::ExamineRuleFile(path);
    EXPECT_EQ(state.kind, RuleFileKind::Repeated);
    EXPECT_FALSE(state.IsSafe());
    EXPECT_TRUE(state.Describe().contains(u"专业“A”"_s)) << state.Describe().toStdString();
    shared::KeepFirstSpecialties(path);
    EXPECT_EQ(shared::ExamineRuleFile(path).kind, RuleFileKind::Rules);
    const QByteArray left = m_folder.ReadFile(u"my.rules.xml"_s);
    EXPECT_TRUE(left.contains("first"));
    EXPECT_TRUE(left.contains("\"B\""));
    EXPECT_FALSE(left.contains("x=\"2\""));
}
