#include "docs/SourceTexts.h"

#include "support/PrintText.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::LiteralsOf;

TEST(LiteralsOf, NamesTheCallsAroundAText)
{
    const auto literals = LiteralsOf(uR"(void F() { Show({Kind, u"text"_s.arg(1)}); })"_s);
    ASSERT_EQ(literals.size(), 1);
    EXPECT_EQ(literals[0].text, u"text"_s);
    EXPECT_EQ(literals[0].around, QStringList({u"F"_s, u"Show"_s, u""_s}));
}

TEST(LiteralsOf, ABodyBearsTheNameOfItsFunction)
{
    const auto literals = LiteralsOf(u"CString C::Fault() const\n{ return u\"bad\"_s; }"_s);
    ASSERT_EQ(literals.size(), 1);
    EXPECT_EQ(literals[0].around, QStringList({u"Fault"_s}));
}

TEST(LiteralsOf, JoinsPiecesAndResolvesEscapes)
{
    const auto literals = LiteralsOf(uR"x(F(u"a\n" "b\"c" u"\\"_s, u"d"))x"_s);
    ASSERT_EQ(literals.size(), 2);
    EXPECT_EQ(literals[0].text, u"a\nb\"c\\"_s);
    EXPECT_EQ(literals[1].text, u"d"_s);
}

TEST(LiteralsOf, CommentsAndCharactersAreNoTexts)
{
    const auto literals = LiteralsOf(u"// \"a\"\n/* \"b\" */ f('\"', 1'000, u\"c\")"_s);
    ASSERT_EQ(literals.size(), 1);
    EXPECT_EQ(literals[0].text, u"c"_s);
}

TEST(AsSeen, DropsMnemonicsMarksAndWhatIsFilledIn)
{
    EXPECT_EQ(test::AsSeen(u"保存(&S)"_s), u"保存"_s);
    EXPECT_EQ(test::AsSeen(u"规则文件(&F)："_s), u"规则文件"_s);
    EXPECT_EQ(test::AsSeen(u"第 %1 行\n第 %2 列!"_s), u"第 … 行 第 … 列"_s);
}
