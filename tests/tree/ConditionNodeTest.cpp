#include "tree/ConditionNode.h"

#include "TreeTesting.h"

#include <memory>

using namespace Qt::StringLiterals;

namespace {

ConditionNode Value(const CString& text)
{
    return ConditionNode(u"材质"_s, true, u"＝"_s, u"＞"_s, u"＜"_s, text, u"1"_s, u"2"_s);
}

ConditionNode Range(const CString& operator1, const CString& operator2, const CString& range1,
                    const CString& range2)
{
    return ConditionNode(u"A"_s, false, u"≠"_s, operator1, operator2, u"值"_s, range1, range2);
}

/// The eight fields in order, the flag as 0 or 1.
CStringArray Fields(const ConditionNode& node)
{
    return {node.GetCFType(),         node.IsEqual() ? u"1"_s : u"0"_s,
            node.GetEqualOperator(),  node.GetRangeOperator1(),
            node.GetRangeOperator2(), node.GetValue(),
            node.GetRange1(),         node.GetRange2()};
}

ConditionNode WithAllFields()
{
    return Range(u"≥"_s, u"≤"_s, u"10"_s, u"20"_s);
}

/// What `Fields` gives for it.
CStringArray AllFields()
{
    return {u"A"_s, u"0"_s, u"≠"_s, u"≥"_s, u"≤"_s, u"值"_s, u"10"_s, u"20"_s};
}

} // namespace

TEST(ConditionNode, DefaultIsTheEmptyTextInValueForm)
{
    const ConditionNode node;
    EXPECT_TRUE(node.IsEqual());
    EXPECT_EQ(node.GetConditionString(), CString());
    EXPECT_EQ(Fields(node), CStringArray({u""_s, u"1"_s, u""_s, u""_s, u""_s, u""_s, u""_s, u""_s}));
    EXPECT_EQ(node.GetId(), 0);
    EXPECT_EQ(node.GetParent(), nullptr);
}

TEST(ConditionNode, ValueConstructorTakesTheFieldsInOrder)
{
    const ConditionNode node(u"1"_s, false, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s, u"7"_s);
    EXPECT_EQ(Fields(node), CStringArray({u"1"_s, u"0"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s, u"7"_s}));
    EXPECT_EQ(node.GetId(), 0);
    EXPECT_EQ(node.GetParent(), nullptr);
}

TEST(ConditionNode, ValueFormIsAttributeOperatorAndValueWithoutBlanks)
{
    EXPECT_EQ(Value(u"PPR"_s).GetConditionString(), u"材质＝PPR"_s);
}

TEST(ConditionNode, ValueFormWithoutValueIgnoresTheRangeFields)
{
    EXPECT_EQ(Value(u""_s).GetConditionString(), u"材质＝"_s);
}

TEST(ConditionNode, RangeFormWithBothBoundsMirrorsTheStrictOperator)
{
    EXPECT_EQ(Range(u"＞"_s, u"≤"_s, u"10"_s, u"20"_s).GetConditionString(), u"10＜A≤20"_s);
}

TEST(ConditionNode, RangeFormWithBothBoundsMirrorsAtLeastToAtMost)
{
    EXPECT_EQ(Range(u"≥"_s, u"＜"_s, u"10"_s, u"20"_s).GetConditionString(), u"10≤A＜20"_s);
}

TEST(ConditionNode, RangeFormWithBothBoundsMirrorsAnyOtherOperatorToAtMost)
{
    for (const CString& unknown : {u""_s, u">"_s, u"＜"_s, u"＞ "_s, u"?"_s})
        EXPECT_EQ(Range(unknown, u"＜"_s, u"1"_s, u"2"_s).GetConditionString(), u"1≤A＜2"_s);
}

TEST(ConditionNode, RangeFormWithOnlyFirstBoundIgnoresSecondOperator)
{
    EXPECT_EQ(Range(u"≥"_s, u"＜"_s, u"10"_s, u""_s).GetConditionString(), u"A≥10"_s);
}

TEST(ConditionNode, RangeFormWithOnlySecondBoundIgnoresFirstOperator)
{
    EXPECT_EQ(Range(u"≥"_s, u"＜"_s, u""_s, u"20"_s).GetConditionString(), u"A＜20"_s);
}

TEST(ConditionNode, RangeFormWithoutBoundsIsTheAttributeAlone)
{
    EXPECT_EQ(Range(u"≥"_s, u"＜"_s, u""_s, u""_s).GetConditionString(), u"A"_s);
}

TEST(ConditionNode, OperatorsAreTheFullwidthAndMathematicalSigns)
{
    EXPECT_EQ(Range(CString(QChar(0xFF1E)), CString(QChar(0x2264)), u"1"_s, u"2"_s).GetConditionString(),
              u"1"_s + QChar(0xFF1C) + u"A"_s + QChar(0x2264) + u"2"_s);
    EXPECT_EQ(Range(CString(QChar(0x2265)), u""_s, u"1"_s, u"2"_s).GetConditionString(),
              u"1"_s + QChar(0x2264) + u"A2"_s);
}

TEST(ConditionNode, CloneHasIdZeroAndNoParent)
{
    QdDeConfigNode parent;
    ConditionNode node = WithAllFields();
    node.SetId(7);
    node.SetParent(&parent);
    const std::unique_ptr<ConditionNode> clone(node.Clone());
    EXPECT_EQ(clone->GetId(), 0);
    EXPECT_EQ(clone->GetParent(), nullptr);
    EXPECT_EQ(Fields(*clone), AllFields());
    EXPECT_EQ(node.GetId(), 7);
}

TEST(ConditionNode, CopyHasIdZeroAndNoParentWhereAssignmentTakesBoth)
{
    QdDeConfigNode parent;
    ConditionNode node = WithAllFields();
    node.SetId(7);
    node.SetParent(&parent);

    const ConditionNode copy(node);
    EXPECT_EQ(copy.GetId(), 0);
    EXPECT_EQ(copy.GetParent(), nullptr);
    EXPECT_EQ(Fields(copy), AllFields());

    ConditionNode assigned;
    EXPECT_EQ(&(assigned = node), &assigned);
    EXPECT_EQ(assigned.GetId(), 7);
    EXPECT_EQ(assigned.GetParent(), &parent);
    EXPECT_EQ(Fields(assigned), AllFields());
}

TEST(ConditionNode, ResetTakesTheFieldsAndKeepsIdAndParent)
{
    QdDeConfigNode parent;
    ConditionNode node;
    node.SetId(7);
    node.SetParent(&parent);
    ConditionNode other = WithAllFields();
    other.SetId(9);
    node.Reset(other);
    EXPECT_EQ(node.GetId(), 7);
    EXPECT_EQ(node.GetParent(), &parent);
    EXPECT_EQ(Fields(node), AllFields());
}

TEST(ConditionNode, WritesIdAndEightAttributesInOrderEmptyOnesToo)
{
    ConditionNode node(u"管径"_s, false, u""_s, u"＞"_s, u""_s, u""_s, u"10"_s, u""_s);
    node.SetId(3);
    EXPECT_EQ(
        test::Written(node),
        u"<n id=\"3\" strCFType=\"管径\" bEqual=\"false\" strEqualoperator=\"\" strRangeoperator1=\"＞\" "
        "strRangeoperator2=\"\" strValue=\"\" strRange1=\"10\" strRange2=\"\">\n"_s);
}

TEST(ConditionNode, WritesTheFlagInWords)
{
    ConditionNode node;
    EXPECT_TRUE(test::Written(node).contains(u" bEqual=\"true\" "_s));
}

TEST(ConditionNode, LeftoversOfTheOtherFormSurviveAFile)
{
    ConditionNode node(u"材质"_s, true, u"＝"_s, u"≥"_s, u"＜"_s, u"PPR"_s, u"10"_s, u"20"_s);
    node.SetId(6);
    ConditionNode read;
    test::RoundTrip(node, read);
    EXPECT_EQ(Fields(read), Fields(node));
    EXPECT_EQ(read.GetId(), 6);
}

TEST(ConditionNode, FlagInCapitalLettersReadsAsFalse)
{
    for (const CString& text : {u"TRUE"_s, u"True"_s, u"1"_s, u" true"_s, u"true "_s, u""_s, u"false"_s}) {
        ConditionNode node;
        EXPECT_TRUE(test::Read(node, u"<n bEqual='"_s + text + u"'/>"_s));
        EXPECT_FALSE(node.IsEqual()) << text.toStdString();
    }
    ConditionNode node = WithAllFields();
    EXPECT_TRUE(test::Read(node, u"<n bEqual='true'/>"_s));
    EXPECT_TRUE(node.IsEqual());
}

TEST(ConditionNode, MissingAttributesReadAsEmptyTextsInRangeForm)
{
    ConditionNode node = WithAllFields();
    node.SetId(7);
    EXPECT_TRUE(test::Read(node, u"<n/>"_s));
    EXPECT_EQ(Fields(node), CStringArray({u""_s, u"0"_s, u""_s, u""_s, u""_s, u""_s, u""_s, u""_s}));
    EXPECT_EQ(node.GetId(), 0);
}

TEST(ConditionNode, CommentReadsAsAnEmptyRangeCondition)
{
    ConditionNode node;
    EXPECT_TRUE(node.ReadData(test::CommentNode()));
    EXPECT_FALSE(node.IsEqual());
    EXPECT_EQ(node.GetConditionString(), CString());
}

TEST(ConditionNode, CharacterThatNoFileCanHoldRaisesWhenWritten)
{
    ConditionNode node = Value(CString(QChar(0x1B)));
    const test::Page page;
    EXPECT_THROW(node.WriteData(page.Root()), xml::Error);
}
