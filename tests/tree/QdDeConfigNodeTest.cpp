#include "tree/QdDeConfigNode.h"

#include "TreeTesting.h"

#include <climits>

using namespace Qt::StringLiterals;
using test::Page;

TEST(QdDeConfigNode, NewNodeHasIdZeroAndNoParent)
{
    const QdDeConfigNode node;
    EXPECT_EQ(node.GetId(), 0);
    EXPECT_EQ(node.GetParent(), nullptr);
}

TEST(QdDeConfigNode, ReadingAnElementWithoutIdGivesZero)
{
    QdDeConfigNode node;
    node.SetId(5);
    EXPECT_TRUE(test::Read(node, u"<n/>"_s));
    EXPECT_EQ(node.GetId(), 0);
}

TEST(QdDeConfigNode, ReadingTakesTheLeadingDigitsOfTheId)
{
    QdDeConfigNode node;
    EXPECT_TRUE(test::Read(node, u"<n id='12ab'/>"_s));
    EXPECT_EQ(node.GetId(), 12);
}

TEST(QdDeConfigNode, ReadingACommentGivesZeroAndTrue)
{
    QdDeConfigNode node;
    node.SetId(5);
    EXPECT_TRUE(node.ReadData(test::CommentNode()));
    EXPECT_EQ(node.GetId(), 0);
}

TEST(QdDeConfigNode, ReadingANullNodeGivesZeroAndTrue)
{
    QdDeConfigNode node;
    node.SetId(5);
    EXPECT_TRUE(node.ReadData({}));
    EXPECT_EQ(node.GetId(), 0);
}

TEST(QdDeConfigNode, ReadingUnderstandsWhateverAnIdHolds)
{
    const std::vector<std::pair<CString, int>> cases{
        {u"-3"_s, -3},  {u"+7"_s, 7},  {u"  8"_s, 8},
        {u"x12"_s, 0},  {u""_s, 0},    {u"99999999999"_s, INT_MAX},
        {u"１２"_s, 0}, {u"- 3"_s, 0}, {u"-99999999999"_s, INT_MIN},
        {u"007"_s, 7},  {u"1.9"_s, 1}, {u"--1"_s, 0},
    };
    for (const auto& [text, id] : cases) {
        QdDeConfigNode node;
        EXPECT_TRUE(test::Read(node, u"<n id='"_s + text + u"'/>"_s));
        EXPECT_EQ(node.GetId(), id) << text.toStdString();
    }
}

TEST(QdDeConfigNode, WritingSetsTheIdAsTheFirstAttribute)
{
    QdDeConfigNode node;
    node.SetId(-42);
    EXPECT_EQ(test::Written(node), u"<n id=\"-42\">\n"_s);
}

TEST(QdDeConfigNode, WritingToANullNodeRaisesThePointerError)
{
    QdDeConfigNode node;
    EXPECT_THROW(node.WriteData({}), xml::PointerError);
    EXPECT_THROW(node.WriteData(test::CommentNode()), xml::PointerError);
}

TEST(QdDeConfigNode, EqualIdsAreSmallerInNeitherDirection)
{
    QdDeConfigNode one;
    QdDeConfigNode other;
    one.SetId(4);
    other.SetId(4);
    EXPECT_FALSE(one < other);
    EXPECT_FALSE(other < one);
}

TEST(QdDeConfigNode, OrderIsThatOfSignedIds)
{
    QdDeConfigNode negative;
    QdDeConfigNode positive;
    negative.SetId(-1);
    positive.SetId(1);
    EXPECT_TRUE(negative < positive);
    EXPECT_FALSE(positive < negative);
}

TEST(QdDeConfigNode, CopyAndAssignmentTakeIdAndParent)
{
    QdDeConfigNode parent;
    QdDeConfigNode node;
    node.SetId(3);
    node.SetParent(&parent);

    const QdDeConfigNode copy(node);
    EXPECT_EQ(copy.GetId(), 3);
    EXPECT_EQ(copy.GetParent(), &parent);

    QdDeConfigNode assigned;
    assigned.SetId(9);
    EXPECT_EQ(&(assigned = node), &assigned);
    EXPECT_EQ(assigned.GetId(), 3);
    EXPECT_EQ(assigned.GetParent(), &parent);
}
