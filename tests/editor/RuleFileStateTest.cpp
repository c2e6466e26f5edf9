#include "editor/RuleFileState.h"

#include "store/RuleFile.h"
#include "store/WrappedFile.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using editor::RuleFileKind;
using editor::RuleFileState;

namespace {

class RuleFileStateTest : public ::testing::Test
{
protected:
    RuleFileState Examine(const QByteArray& bytes) const
    {
        return editor::ExamineRuleFile(m_folder.WriteFile(u"my.rules.xml"_s, bytes));
    }

    test::TempFolder m_folder;
};

} // namespace

TEST_F(RuleFileStateTest, RuleFileIsSafe)
{
    const RuleFileState state = Examine('<' + store::RootName().toUtf8() + "/>");
    EXPECT_EQ(state.kind, RuleFileKind::Rules);
    EXPECT_TRUE(state.IsSafe());
    EXPECT_EQ(state.Name(), u"my.rules"_s);
}

TEST_F(RuleFileStateTest, MissingFileIsSafe)
{
    const RuleFileState state = editor::ExamineRuleFile(m_folder.Path(u"none.xml"_s));
    EXPECT_EQ(state.kind, RuleFileKind::Missing);
    EXPECT_TRUE(state.IsSafe());
}

TEST_F(RuleFileStateTest, DamagedFileTellsLineColumnAndReason)
{
    const RuleFileState state = Examine("<a>\n  <b x=\"1\" x=\"2\"/>\n</a>");
    EXPECT_EQ(state.kind, RuleFileKind::Unreadable);
    EXPECT_FALSE(state.IsSafe());
    EXPECT_EQ(state.line, 2);
    EXPECT_GT(state.column, 1);
    EXPECT_TRUE(state.Describe().startsWith(u"读不了：第 2 行第 %1 列，"_s.arg(state.column)));
    EXPECT_TRUE(state.Describe().endsWith(state.reason));
    EXPECT_FALSE(state.reason.isEmpty());
}

TEST_F(RuleFileStateTest, AnotherDocumentElementIsForeign)
{
    const RuleFileState state = Examine("<other/>");
    EXPECT_EQ(state.kind, RuleFileKind::Foreign);
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
    const RuleFileState state = Examine(bytes);
    EXPECT_EQ(state.kind, RuleFileKind::Wrapped);
    EXPECT_FALSE(state.IsSafe());
}
