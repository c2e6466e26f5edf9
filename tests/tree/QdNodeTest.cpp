#include "tree/QdNode.h"

#include "TreeTesting.h"
#include "support/ItemRecords.h"

#include <memory>

using namespace Qt::StringLiterals;
using test::De;

namespace {

QdStruct FullQd()
{
    return {u"030801001"_s, u"user"_s,   u"镀锌钢管"_s, u"10m"_s, u"10"_s,
            u"type"_s,      u"QD2013"_s, u"L*2"_s,      u"是"_s};
}

DeStruct FullDe()
{
    return {u"管道安装"_s, u"10m"_s, u"10"_s, u"C8-1"_s, u"DE2018"_s, u"L/10"_s, u"否"_s};
}

CStringArray Fields(const DeStruct& record)
{
    CStringArray texts;
    for (const auto& [name, field] : DeFields)
        texts << record.*field;
    return texts;
}

CStringArray Fields(const QdStruct& record)
{
    CStringArray texts;
    for (const auto& [name, field] : QdFields)
        texts << record.*field;
    return texts;
}

/// A bill item with quota items 1, 2 and 3.
std::unique_ptr<QdNode> WithThreeQuotas()
{
    auto node = std::make_unique<QdNode>();
    for (const CString& number : {u"C8-1"_s, u"C8-2"_s, u"C8-3"_s})
        node->AddDe(De(number));
    return node;
}

} // namespace

TEST(QdNode, NewBillItemIsEmpty)
{
    const QdNode node;
    EXPECT_EQ(Fields(node.GetRecord()), CStringArray(9));
    EXPECT_EQ(node.GetLastDeId(), 0);
    EXPECT_TRUE(node.GetDe().empty());
}

TEST(QdNode, RoundTripKeepsIdsOrderAndHighestQuotaId)
{
    auto node = std::make_unique<QdNode>();
    node->SetId(4);
    node->SetRecord(FullQd());
    for (const int id : {5, 9, 2}) {
        node->SetLastDeId(id - 1);
        node->AddDe(De(u"C8-%1"_s.arg(id)));
    }
    QdNode read;
    test::RoundTrip(*node, read);
    EXPECT_EQ(read.GetId(), 4);
    EXPECT_EQ(Fields(read.GetRecord()), Fields(FullQd()));
    EXPECT_EQ(test::Ids(read.GetDe()), (std::vector<int>{5, 9, 2}));
    EXPECT_EQ(read.GetDe(9)->GetRecord().strDeId, u"C8-9"_s);
    EXPECT_EQ(read.GetDe(9)->GetParent(), &read);
    EXPECT_EQ(read.GetLastDeId(), 9);
}

TEST(QdNode, AddingNumbersFromOneAndSetsTheParent)
{
    const auto node = WithThreeQuotas();
    EXPECT_EQ(test::Ids(node->GetDe()), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(node->GetDe(2)->GetParent(), node.get());
    EXPECT_EQ(node->GetDe(2)->GetRecord().strDeId, u"C8-2"_s);
    EXPECT_EQ(node->GetLastDeId(), 3);
}

TEST(QdNode, IdOfADeletedLastItemIsNotGivenOutAgainInMemory)
{
    const auto node = WithThreeQuotas();
    EXPECT_TRUE(node->DelDe({3}));
    EXPECT_TRUE(node->AddDe(De(u"new"_s)));
    EXPECT_EQ(test::Ids(node->GetDe()), (std::vector<int>{1, 2, 4}));
}

TEST(QdNode, IdOfADeletedLastItemIsGivenOutAgainAfterAFile)
{
    const auto node = WithThreeQuotas();
    node->DelDe({3});
    QdNode read;
    test::RoundTrip(*node, read);
    EXPECT_EQ(read.GetLastDeId(), 2);
    read.AddDe(De(u"new"_s));
    EXPECT_EQ(test::Ids(read.GetDe()), (std::vector<int>{1, 2, 3}));
}

TEST(QdNode, DeletingNothingIsTrueAndChangesNothing)
{
    const auto node = WithThreeQuotas();
    EXPECT_TRUE(node->DelDe({}));
    EXPECT_TRUE(node->DelDe({0, 7, -1}));
    EXPECT_EQ(test::Ids(node->GetDe()), (std::vector<int>{1, 2, 3}));
}

TEST(QdNode, DeletingKeepsTheOrderOfTheOthersAndTheCounter)
{
    const auto node = WithThreeQuotas();
    node->AddDe(De(u"C8-4"_s));
    EXPECT_TRUE(node->DelDe({1, 3, 99}));
    EXPECT_EQ(test::Ids(node->GetDe()), (std::vector<int>{2, 4}));
    EXPECT_EQ(node->GetLastDeId(), 4);
}

TEST(QdNode, DeletingARepeatedIdDeletesAllThatHaveIt)
{
    QdNode node;
    test::Read(node, u"<n><De><De id='1'/><De id='2'/><De id='1'/></De></n>"_s);
    EXPECT_TRUE(node.DelDe({1}));
    EXPECT_EQ(test::Ids(node.GetDe()), (std::vector<int>{2}));
}

TEST(QdNode, ResettingAnUnknownIdIsFalseAndChangesNothing)
{
    const auto node = WithThreeQuotas();
    const CString before = test::Written(*node);
    EXPECT_FALSE(node->ReSetDe(4, FullDe()));
    EXPECT_EQ(test::Written(*node), before);
}

TEST(QdNode, ResettingOverwritesTheWholeRecordAndKeepsTheId)
{
    const auto node = WithThreeQuotas();
    EXPECT_TRUE(node->ReSetDe(2, FullDe()));
    EXPECT_EQ(Fields(node->GetDe(2)->GetRecord()), Fields(FullDe()));
    EXPECT_TRUE(node->ReSetDe(2, DeStruct{}));
    EXPECT_EQ(Fields(node->GetDe(2)->GetRecord()), CStringArray(7));
    EXPECT_EQ(test::Ids(node->GetDe()), (std::vector<int>{1, 2, 3}));
}

TEST(QdNode, WithoutContainerThereAreNoQuotaItems)
{
    QdNode node;
    EXPECT_TRUE(test::Read(node, u"<qd id='2' strQdId='03'/>"_s));
    EXPECT_TRUE(node.GetDe().empty());
    EXPECT_EQ(node.GetRecord().strQdId, u"03"_s);
    EXPECT_EQ(node.GetLastDeId(), 0);
}

TEST(QdNode, ContainerIsFoundByItsExactName)
{
    QdNode node;
    test::Read(node, u"<qd><de><De id='1'/></de><DE><De id='2'/></DE></qd>"_s);
    EXPECT_TRUE(node.GetDe().empty());
}

TEST(QdNode, OnlyTheFirstContainerIsRead)
{
    QdNode node;
    test::Read(node, u"<qd><x/><De><De id='1'/></De><De><De id='2'/></De></qd>"_s);
    EXPECT_EQ(test::Ids(node.GetDe()), (std::vector<int>{1}));
}

TEST(QdNode, CommentInTheContainerReadsAsAnEmptyQuotaItem)
{
    QdNode node;
    EXPECT_TRUE(test::Read(node, u"<qd><De><De id='3' strName='a'/><!--注--></De></qd>"_s));
    EXPECT_EQ(test::Ids(node.GetDe()), (std::vector<int>{3, 0}));
    EXPECT_EQ(Fields(node.GetDe(0)->GetRecord()), CStringArray(7));
    EXPECT_EQ(node.GetDe(0)->GetParent(), &node);
}

TEST(QdNode, AnyNodeInTheContainerReadsAsAQuotaItem)
{
    QdNode node;
    EXPECT_TRUE(test::Read(node, u"<qd><De>文<x id='5' strName='b'/><?p i?><![CDATA[c]]></De></qd>"_s));
    EXPECT_EQ(test::Ids(node.GetDe()), (std::vector<int>{0, 5, 0, 0}));
    EXPECT_EQ(node.GetDe(5)->GetRecord().strName, u"b"_s);
}

TEST(QdNode, CommentReadsAsAnEmptyBillItem)
{
    QdNode node;
    node.SetId(3);
    EXPECT_TRUE(node.ReadData(test::CommentNode()));
    EXPECT_EQ(node.GetId(), 0);
    EXPECT_EQ(Fields(node.GetRecord()), CStringArray(9));
}

TEST(QdNode, RepeatedIdsAreKeptAndTheFirstIsFound)
{
    QdNode node;
    test::Read(node, u"<qd><De><De id='1' strName='a'/><De id='1' strName='b'/></De></qd>"_s);
    EXPECT_EQ(test::Ids(node.GetDe()), (std::vector<int>{1, 1}));
    EXPECT_EQ(node.GetDe(1)->GetRecord().strName, u"a"_s);
    EXPECT_TRUE(node.ReSetDe(1, FullDe()));
    EXPECT_EQ(node.GetDe().back()->GetRecord().strName, u"b"_s);
}

TEST(QdNode, NegativeIdsDoNotLowerTheCounter)
{
    QdNode node;
    test::Read(node, u"<qd><De><De id='-5'/></De></qd>"_s);
    EXPECT_EQ(node.GetLastDeId(), 0);
    EXPECT_NE(node.GetDe(-5), nullptr);
}

TEST(QdNode, CloneKeepsIdsAndCounterAndIsTheParentOfItsChildren)
{
    QdDeConfigNode parent;
    const auto node = WithThreeQuotas();
    node->SetId(8);
    node->SetParent(&parent);
    node->SetRecord(FullQd());
    node->DelDe({2});
    const std::unique_ptr<QdNode> clone(node->Clone());
    EXPECT_EQ(clone->GetId(), 8);
    EXPECT_EQ(clone->GetParent(), &parent);
    EXPECT_EQ(clone->GetLastDeId(), 3);
    EXPECT_EQ(Fields(clone->GetRecord()), Fields(FullQd()));
    EXPECT_EQ(test::Ids(clone->GetDe()), (std::vector<int>{1, 3}));
    for (const DeNode* child : clone->GetDe())
        EXPECT_EQ(child->GetParent(), clone.get());
    EXPECT_NE(clone->GetDe(1), node->GetDe(1));
}

TEST(QdNode, DeletingAllLeavesTheCounter)
{
    const auto node = WithThreeQuotas();
    node->DeleteAllDe();
    EXPECT_TRUE(node->GetDe().empty());
    EXPECT_EQ(node->GetLastDeId(), 3);
    node->AddDe(De(u"new"_s));
    EXPECT_EQ(test::Ids(node->GetDe()), (std::vector<int>{4}));
}

TEST(QdNode, AddingAPointerNeitherNumbersNorSetsTheParent)
{
    QdDeConfigNode elsewhere;
    QdNode node;
    auto child = std::make_unique<DeNode>();
    child->SetId(6);
    child->SetParent(&elsewhere);
    node.AddDe(child.release());
    EXPECT_EQ(test::Ids(node.GetDe()), (std::vector<int>{6}));
    EXPECT_EQ(node.GetDe(6)->GetParent(), &elsewhere);
    EXPECT_EQ(node.GetLastDeId(), 0);
}

TEST(QdNode, ListHandedOutIsACopy)
{
    const auto node = WithThreeQuotas();
    std::vector<DeNode*> list = node->GetDe();
    list.clear();
    EXPECT_EQ(node->GetDe().size(), 3U);
}

TEST(QdNode, WritesTenAttributesInOrderAndAnEmptyContainer)
{
    QdNode node;
    node.SetId(2);
    node.SetRecord(FullQd());
    node.SetLastDeId(5);
    EXPECT_EQ(
        test::Written(node),
        u"<n id=\"2\" strQdId=\"030801001\" strQdIdUser=\"user\" strName=\"镀锌钢管\" strUnit=\"10m\" "
        "strUnitCode=\"10\" strtypeid=\"type\" strQdCode=\"QD2013\" strFormula=\"L*2\" strAnnex=\"是\">\n"
        " <De>\n"_s);
}

TEST(QdNode, WritesEveryQuotaItemAsDeInTheContainerDe)
{
    const auto node = WithThreeQuotas();
    node->DelDe({1, 2});
    EXPECT_TRUE(test::Written(*node).endsWith(
        u"\n <De>\n  <De id=\"3\" strName=\"\" strUnit=\"\" strUnitCode=\"\" strDeId=\"C8-3\" strDeCode=\"\" "
        "strFormula=\"\" strAnnex=\"\">\n"_s));
}

TEST(DeNode, WritesEightAttributesInOrder)
{
    DeNode node;
    node.SetId(2);
    node.SetRecord(FullDe());
    EXPECT_EQ(test::Written(node),
              u"<n id=\"2\" strName=\"管道安装\" strUnit=\"10m\" strUnitCode=\"10\" "
              "strDeId=\"C8-1\" strDeCode=\"DE2018\" strFormula=\"L/10\" strAnnex=\"否\">\n"_s);
}

TEST(DeNode, RoundTripKeepsIdAndRecord)
{
    DeNode node;
    node.SetId(-2);
    node.SetRecord(FullDe());
    DeNode read;
    test::RoundTrip(node, read);
    EXPECT_EQ(read.GetId(), -2);
    EXPECT_EQ(Fields(read.GetRecord()), Fields(FullDe()));
}

TEST(DeNode, MissingAttributesReadAsEmpty)
{
    DeNode node;
    node.SetRecord(FullDe());
    EXPECT_TRUE(test::Read(node, u"<De/>"_s));
    EXPECT_EQ(Fields(node.GetRecord()), CStringArray(7));
}

TEST(DeNode, CloneKeepsIdParentAndRecord)
{
    QdDeConfigNode parent;
    DeNode node;
    node.SetId(4);
    node.SetParent(&parent);
    node.SetRecord(FullDe());
    const std::unique_ptr<DeNode> clone(node.Clone());
    EXPECT_EQ(clone->GetId(), 4);
    EXPECT_EQ(clone->GetParent(), &parent);
    EXPECT_EQ(Fields(clone->GetRecord()), Fields(FullDe()));
}
