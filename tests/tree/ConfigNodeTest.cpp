#include "tree/ConfigNode.h"

#include "TreeTesting.h"
#include "support/ItemRecords.h"

#include <memory>

using namespace Qt::StringLiterals;
using test::De;
using test::Qd;

namespace {

ConditionNode Condition(const CString& value)
{
    return ConditionNode(u"A"_s, true, u"＝"_s, {}, {}, value, {}, {});
}

/// A rule with three of everything, numbered from 1.
std::unique_ptr<ConfigNode> WithThree()
{
    auto rule = std::make_unique<ConfigNode>();
    for (const CString& text : {u"x"_s, u"y"_s, u"z"_s}) {
        rule->AddCondition(Condition(text));
        rule->AddQd(Qd(text));
        rule->AddDe(De(text));
    }
    return rule;
}

std::vector<int> OneToThree()
{
    return {1, 2, 3};
}

} // namespace

TEST(ConfigNode, NewRuleIsEmptyAndNoDefault)
{
    const ConfigNode rule;
    EXPECT_FALSE(rule.IfDefault());
    EXPECT_EQ(rule.GetLastConditionId(), 0);
    EXPECT_EQ(rule.GetLastQdId(), 0);
    EXPECT_EQ(rule.GetLastDeId(), 0);
    EXPECT_TRUE(rule.GetCondition().empty());
    EXPECT_TRUE(rule.GetQd().empty());
    EXPECT_TRUE(rule.GetDe().empty());
    EXPECT_EQ(rule.GetConditionString(), CString());
}

TEST(ConfigNode, FirstOfEachKindGetsIdOneFromItsOwnCounter)
{
    ConfigNode rule;
    EXPECT_TRUE(rule.AddCondition(Condition(u"x"_s)));
    EXPECT_EQ(rule.GetLastQdId(), 0);
    EXPECT_TRUE(rule.AddQd(Qd(u"03"_s)));
    EXPECT_EQ(rule.GetLastDeId(), 0);
    EXPECT_TRUE(rule.AddDe(De(u"C1"_s)));
    EXPECT_EQ(test::Ids(rule.GetCondition()), std::vector<int>{1});
    EXPECT_EQ(test::Ids(rule.GetQd()), std::vector<int>{1});
    EXPECT_EQ(test::Ids(rule.GetDe()), std::vector<int>{1});
    EXPECT_EQ(rule.GetLastConditionId(), 1);
    EXPECT_EQ(rule.GetLastQdId(), 1);
    EXPECT_EQ(rule.GetLastDeId(), 1);
}

TEST(ConfigNode, AddedConditionIsANumberedCopyWithoutParent)
{
    QdDeConfigNode elsewhere;
    ConfigNode rule;
    rule.SetLastConditionId(4);
    ConditionNode given = Condition(u"x"_s);
    given.SetId(9);
    given.SetParent(&elsewhere);
    EXPECT_TRUE(rule.AddCondition(given));
    EXPECT_EQ(test::Ids(rule.GetCondition()), std::vector<int>{5});
    EXPECT_EQ(rule.GetCondition().front()->GetParent(), nullptr);
    EXPECT_EQ(rule.GetCondition().front()->GetValue(), u"x"_s);
    EXPECT_EQ(given.GetId(), 9);
    EXPECT_EQ(given.GetParent(), &elsewhere);
}

TEST(ConfigNode, AddedItemsHaveTheRuleAsParent)
{
    const auto rule = WithThree();
    EXPECT_EQ(rule->GetQd(2)->GetParent(), rule.get());
    EXPECT_EQ(rule->GetDe(2)->GetParent(), rule.get());
    EXPECT_EQ(rule->GetQd(2)->GetRecord().strQdId, u"y"_s);
    EXPECT_EQ(rule->GetDe(2)->GetRecord().strDeId, u"y"_s);
}

TEST(ConfigNode, AddingPointersNeitherNumbersNorSetsTheParent)
{
    ConfigNode rule;
    auto condition = std::make_unique<ConditionNode>();
    auto qd = std::make_unique<QdNode>();
    auto de = std::make_unique<DeNode>();
    condition->SetId(5);
    qd->SetId(6);
    de->SetId(7);
    rule.AddCondition(condition.release());
    rule.AddQd(qd.release());
    rule.AddDe(de.release());
    EXPECT_EQ(test::Ids(rule.GetCondition()), std::vector<int>{5});
    EXPECT_EQ(rule.GetQd(6)->GetParent(), nullptr);
    EXPECT_EQ(rule.GetDe(7)->GetParent(), nullptr);
    EXPECT_EQ(rule.GetLastConditionId() + rule.GetLastQdId() + rule.GetLastDeId(), 0);
}

TEST(ConfigNode, IdsOfDeletedChildrenAreNotGivenOutAgainInMemory)
{
    const auto rule = WithThree();
    EXPECT_TRUE(rule->DelCondition(3));
    EXPECT_TRUE(rule->DelQd({3}));
    EXPECT_TRUE(rule->DelDe({3}));
    rule->AddCondition(Condition(u"new"_s));
    rule->AddQd(Qd(u"new"_s));
    rule->AddDe(De(u"new"_s));
    const std::vector<int> expected{1, 2, 4};
    EXPECT_EQ(test::Ids(rule->GetCondition()), expected);
    EXPECT_EQ(test::Ids(rule->GetQd()), expected);
    EXPECT_EQ(test::Ids(rule->GetDe()), expected);
}

TEST(ConfigNode, IdsOfDeletedChildrenAreNotGivenOutAgainAfterAFile)
{
    const auto rule = WithThree();
    rule->DelCondition(3);
    rule->DelQd({3});
    rule->DelDe({3});
    ConfigNode read;
    test::RoundTrip(*rule, read);
    read.AddCondition(Condition(u"new"_s));
    read.AddQd(Qd(u"new"_s));
    read.AddDe(De(u"new"_s));
    const std::vector<int> expected{1, 2, 4};
    EXPECT_EQ(test::Ids(read.GetCondition()), expected);
    EXPECT_EQ(test::Ids(read.GetQd()), expected);
    EXPECT_EQ(test::Ids(read.GetDe()), expected);
}

TEST(ConfigNode, DeletingAllKeepsTheCounters)
{
    const auto rule = WithThree();
    rule->DeleteAllCondition();
    rule->DeleteAllQd();
    rule->DeleteAllDe();
    EXPECT_TRUE(rule->GetCondition().empty() && rule->GetQd().empty() && rule->GetDe().empty());
    EXPECT_EQ(rule->GetLastConditionId(), 3);
    EXPECT_EQ(rule->GetLastQdId(), 3);
    EXPECT_EQ(rule->GetLastDeId(), 3);
}

TEST(ConfigNode, DefaultRuleReadsAsOtherWhateverItHolds)
{
    const auto rule = WithThree();
    rule->SetDefault(true);
    EXPECT_EQ(rule->GetConditionString(), u"其它"_s);
    rule->DeleteAllCondition();
    EXPECT_EQ(rule->GetConditionString(), u"其它"_s);
}

TEST(ConfigNode, TextOfARuleIsEachConditionFollowedByASemicolon)
{
    ConfigNode rule;
    rule.AddCondition(Condition(u"x"_s));
    rule.AddCondition(ConditionNode(u"B"_s, false, {}, u"＞"_s, u"≤"_s, {}, u"1"_s, u"2"_s));
    EXPECT_EQ(rule.GetConditionString(), u"A＝x;1＜B≤2;"_s);
}

TEST(ConfigNode, ExistingBillNumbersAreAppendedInOrderWithRepeats)
{
    ConfigNode rule;
    for (const CString& number : {u"03"_s, u"01"_s, u"03"_s})
        rule.AddQd(Qd(number));
    std::vector<CString> numbers{u"before"_s};
    EXPECT_TRUE(rule.GetExistQdIndex(numbers));
    EXPECT_EQ(numbers, (std::vector<CString>{u"before"_s, u"03"_s, u"01"_s, u"03"_s}));
}

TEST(ConfigNode, DeletingAnUnknownConditionIsFalse)
{
    const auto rule = WithThree();
    EXPECT_FALSE(rule->DelCondition(4));
    EXPECT_EQ(test::Ids(rule->GetCondition()), OneToThree());
}

TEST(ConfigNode, DeletingUnknownItemsIsTrueAndChangesNothing)
{
    const auto rule = WithThree();
    EXPECT_TRUE(rule->DelQd({}));
    EXPECT_TRUE(rule->DelQd({4, 0}));
    EXPECT_TRUE(rule->DelDe({}));
    EXPECT_TRUE(rule->DelDe({4, 0}));
    EXPECT_EQ(test::Ids(rule->GetQd()), OneToThree());
    EXPECT_EQ(test::Ids(rule->GetDe()), OneToThree());
}

TEST(ConfigNode, DeletingItemsKeepsTheOrderOfTheOthers)
{
    const auto rule = WithThree();
    EXPECT_TRUE(rule->DelQd({2, 9}));
    EXPECT_TRUE(rule->DelDe({1, 9}));
    EXPECT_EQ(test::Ids(rule->GetQd()), (std::vector<int>{1, 3}));
    EXPECT_EQ(test::Ids(rule->GetDe()), (std::vector<int>{2, 3}));
}

TEST(ConfigNode, ResettingUnknownIdsIsFalse)
{
    const auto rule = WithThree();
    const CString before = test::Written(*rule);
    EXPECT_FALSE(rule->ResetCondition(4, Condition(u"new"_s)));
    EXPECT_FALSE(rule->ResetQd(4, Qd(u"new"_s)));
    EXPECT_FALSE(rule->ResetDe(4, De(u"new"_s)));
    EXPECT_EQ(test::Written(*rule), before);
}

TEST(ConfigNode, ResettingAConditionKeepsItsId)
{
    const auto rule = WithThree();
    EXPECT_TRUE(rule->ResetCondition(2, Condition(u"new"_s)));
    EXPECT_EQ(test::Ids(rule->GetCondition()), OneToThree());
    EXPECT_EQ(rule->GetConditionString(), u"A＝x;A＝new;A＝z;"_s);
}

TEST(ConfigNode, ResettingABillItemKeepsItsIdAndQuotaItems)
{
    const auto rule = WithThree();
    rule->GetQd(2)->AddDe(De(u"C8"_s));
    QdStruct record = Qd(u"new"_s);
    record.strName = u"名"_s;
    EXPECT_TRUE(rule->ResetQd(2, record));
    EXPECT_EQ(test::Ids(rule->GetQd()), OneToThree());
    EXPECT_EQ(rule->GetQd(2)->GetRecord().strQdId, u"new"_s);
    EXPECT_EQ(rule->GetQd(2)->GetRecord().strName, u"名"_s);
    EXPECT_EQ(rule->GetQd(2)->GetDe(1)->GetRecord().strDeId, u"C8"_s);
}

TEST(ConfigNode, ResettingAQuotaItemOverwritesItsWholeRecord)
{
    const auto rule = WithThree();
    EXPECT_TRUE(rule->ResetDe(2, DeStruct{}));
    EXPECT_EQ(rule->GetDe(2)->GetRecord().strDeId, CString());
    EXPECT_EQ(test::Ids(rule->GetDe()), OneToThree());
}

TEST(ConfigNode, ConditionsOfACloneHaveIdZeroAndTheFirstOfThemIsFound)
{
    const auto rule = WithThree();
    const std::unique_ptr<ConfigNode> clone(rule->Clone());
    EXPECT_EQ(test::Ids(clone->GetCondition()), (std::vector<int>{0, 0, 0}));
    EXPECT_FALSE(clone->DelCondition(1));
    EXPECT_TRUE(clone->DelCondition(0));
    EXPECT_EQ(clone->GetConditionString(), u"A＝y;A＝z;"_s);
    EXPECT_TRUE(clone->ResetCondition(0, Condition(u"new"_s)));
    EXPECT_EQ(clone->GetConditionString(), u"A＝new;A＝z;"_s);
}

TEST(ConfigNode, ConditionsAddedToACloneGoOnFromTheOldNumber)
{
    const auto rule = WithThree();
    const std::unique_ptr<ConfigNode> clone(rule->Clone());
    EXPECT_TRUE(clone->AddCondition(Condition(u"new"_s)));
    EXPECT_EQ(test::Ids(clone->GetCondition()), (std::vector<int>{0, 0, 0, 4}));
}

TEST(ConfigNode, CloneKeepsIdParentCountersFlagAndItemIds)
{
    QdDeConfigNode parent;
    const auto rule = WithThree();
    rule->SetId(12);
    rule->SetParent(&parent);
    rule->SetDefault(true);
    rule->SetLastQdId(30);
    rule->SetLastDeId(40);
    rule->DelQd({1});
    rule->GetQd(2)->AddDe(De(u"C8"_s));
    const std::unique_ptr<ConfigNode> clone(rule->Clone());
    EXPECT_EQ(clone->GetId(), 12);
    EXPECT_EQ(clone->GetParent(), &parent);
    EXPECT_TRUE(clone->IfDefault());
    EXPECT_EQ(clone->GetLastConditionId(), 3);
    EXPECT_EQ(clone->GetLastQdId(), 30);
    EXPECT_EQ(clone->GetLastDeId(), 40);
    EXPECT_EQ(test::Ids(clone->GetQd()), (std::vector<int>{2, 3}));
    EXPECT_EQ(test::Ids(clone->GetDe()), OneToThree());
    EXPECT_EQ(clone->GetQd(2)->GetDe(1)->GetParent(), clone->GetQd(2));
}

TEST(ConfigNode, CloneIsTheParentOfItsChildrenAndSharesNone)
{
    auto rule = WithThree();
    const std::unique_ptr<ConfigNode> clone(rule->Clone());
    for (const QdNode* child : clone->GetQd())
        EXPECT_EQ(child->GetParent(), clone.get());
    for (const DeNode* child : clone->GetDe())
        EXPECT_EQ(child->GetParent(), clone.get());
    for (const ConditionNode* child : clone->GetCondition())
        EXPECT_EQ(child->GetParent(), clone.get());
    rule.reset();
    EXPECT_EQ(clone->GetConditionString(), u"A＝x;A＝y;A＝z;"_s);
    EXPECT_EQ(clone->GetQd(3)->GetRecord().strQdId, u"z"_s);
}

TEST(ConfigNode, CounterAtTheLargestNumberGoesOnAtTheSmallest)
{
    ConfigNode rule;
    rule.SetLastConditionId(2147483647);
    EXPECT_TRUE(rule.AddCondition(Condition(u"x"_s)));
    EXPECT_EQ(test::Ids(rule.GetCondition()), std::vector<int>{-2147483647 - 1});
}
