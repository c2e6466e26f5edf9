#include "tree/SMember.h"

#include "TreeTesting.h"

#include <memory>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

/// A small category read from the element that `text` is.
std::unique_ptr<SMember> Made(const CString& text)
{
    auto member = std::make_unique<SMember>();
    EXPECT_TRUE(test::Read(*member, text));
    return member;
}

std::vector<int> Ids(const SMember& member)
{
    return test::Ids(member.GetAllConfig());
}

/// The rule counter, which only a file shows.
CString Counter(SMember& member)
{
    return test::Written(member).section(u"LastConfigId=\""_s, 1).section(u'"', 0, 0);
}

/// Rules 1 and 2, the first being the default rule.
std::unique_ptr<SMember> OneAndTwo()
{
    return Made(
        u"<SMember name='管'><Config><Config id='1' bDefault='1'/><Config id='2'/></Config></SMember>"_s);
}

const CPath& AnyPath()
{
    static const CPath path{};
    return path;
}

} // namespace

TEST(SMember, RulesWithoutADefaultGetOneWithIdOneAtTheEndAndTheCounterIsRaised)
{
    const auto member = Made(u"<SMember><Config><Config id='4'/><Config id='7'/></Config></SMember>"_s);
    EXPECT_EQ(Ids(*member), (std::vector<int>{4, 7, 1}));
    EXPECT_TRUE(member->GetAllConfig().back()->IfDefault());
    EXPECT_EQ(member->GetAllConfig().back()->GetParent(), member.get());
    EXPECT_EQ(Counter(*member), u"8"_s);
}

TEST(SMember, MissingDefaultHasIdOneAlsoBesideAnotherRuleWithIdOne)
{
    const auto member = Made(u"<SMember><Config><Config id='1'/></Config></SMember>"_s);
    EXPECT_EQ(Ids(*member), (std::vector<int>{1, 1}));
    EXPECT_FALSE(member->GetConfig(1)->IfDefault());
    EXPECT_EQ(Counter(*member), u"2"_s);
}

TEST(SMember, EmptyContainerGetsADefaultRule)
{
    const auto member = Made(u"<SMember><Config/></SMember>"_s);
    EXPECT_EQ(Ids(*member), std::vector<int>{1});
    EXPECT_TRUE(member->GetConfig(1)->IfDefault());
    EXPECT_EQ(Counter(*member), u"1"_s);
}

TEST(SMember, WithoutContainerThereIsOneDefaultRuleWithIdOne)
{
    const auto member = Made(u"<SMember name='管'/>"_s);
    EXPECT_EQ(Ids(*member), std::vector<int>{1});
    EXPECT_TRUE(member->GetConfig(1)->IfDefault());
    EXPECT_EQ(member->GetName(), u"管"_s);
    EXPECT_EQ(Counter(*member), u"1"_s);
}

TEST(SMember, ReadingMakesTheDefaultRuleInTheDocumentWithItsOwnOrderOfAttributes)
{
    const test::Page page(u"<SMember/>"_s);
    SMember member;
    EXPECT_TRUE(member.ReadData(page.Root()));
    EXPECT_EQ(page.Canonical(),
              u"<SMember>\n <Config>\n"
              "  <config id=\"1\" bDefault=\"1\" LastQdId=\"0\" LastConditionId=\"0\" LastDeId=\"0\">\n"_s);
}

TEST(SMember, CounterOfTheFileIsNotRead)
{
    const auto member =
        Made(u"<SMember LastConfigId='50'><Config><x id='3' bDefault='1'/></Config></SMember>"_s);
    EXPECT_EQ(Counter(*member), u"3"_s);
}

TEST(SMember, IdOfTheFileIsNotRead)
{
    SMember member;
    member.SetId(111);
    test::Read(member, u"<SMember id='7'/>"_s);
    EXPECT_EQ(member.GetId(), 111);
}

TEST(SMember, AnyNodeInTheContainerReadsAsARule)
{
    const auto member = Made(u"<SMember><Config><!--c-->文<rule id='3'/><Config id='1' bDefault='1'/>"
                             "<?p i?></Config></SMember>"_s);
    EXPECT_EQ(Ids(*member), (std::vector<int>{0, 0, 3, 1, 0}));
    for (const ConfigNode* rule : member->GetAllConfig())
        EXPECT_EQ(rule->GetParent(), member.get());
}

TEST(SMember, DefaultRuleInTheMiddleStaysThere)
{
    const auto member =
        Made(u"<SMember><Config><c id='2'/><c id='1' bDefault='1'/><c id='3'/></Config></SMember>"_s);
    EXPECT_EQ(Ids(*member), (std::vector<int>{2, 1, 3}));
    int newId = 0;
    EXPECT_TRUE(member->AddConfig(AnyPath(), newId));
    EXPECT_EQ(Ids(*member), (std::vector<int>{2, 1, 4, 3}));
}

TEST(SMember, AddedRuleGetsTheNextIdAndStandsBeforeTheLast)
{
    const auto member = OneAndTwo();
    int newId = 0;
    EXPECT_TRUE(member->AddConfig(AnyPath(), newId));
    EXPECT_EQ(newId, 3);
    EXPECT_EQ(Ids(*member), (std::vector<int>{1, 3, 2}));
    EXPECT_EQ(member->GetConfig(3)->GetParent(), member.get());
    EXPECT_FALSE(member->GetConfig(3)->IfDefault());
}

TEST(SMember, FirstRuleAddedToAFreshCategoryGetsIdTwoAndStandsFirst)
{
    const auto member = Made(u"<SMember/>"_s);
    int newId = 0;
    EXPECT_TRUE(member->AddConfig(AnyPath(), newId));
    EXPECT_EQ(newId, 2);
    EXPECT_EQ(Ids(*member), (std::vector<int>{2, 1}));
}

TEST(SMember, AddingToAnEmptyListRaisesAndChangesNothing)
{
    const auto member = Made(u"<SMember/>"_s);
    member->DeleteAllConfig();
    int newId = 77;
    EXPECT_THROW(member->AddConfig(AnyPath(), newId), std::out_of_range);
    EXPECT_EQ(newId, 77);
    EXPECT_TRUE(Ids(*member).empty());
    EXPECT_EQ(Counter(*member), u"1"_s);
}

TEST(SMember, AddingAPointerAppendsItAsItIs)
{
    const auto member = OneAndTwo();
    auto rule = std::make_unique<ConfigNode>();
    rule->SetId(9);
    member->AddConfig(rule.release());
    EXPECT_EQ(Ids(*member), (std::vector<int>{1, 2, 9}));
    EXPECT_EQ(member->GetConfig(9)->GetParent(), nullptr);
    EXPECT_EQ(Counter(*member), u"2"_s);
}

TEST(SMember, CopyingAnUnknownRuleIsFalseAndLeavesTheCounter)
{
    const auto member = OneAndTwo();
    int newId = 77;
    EXPECT_FALSE(member->AddConfigByCopy(9, newId));
    EXPECT_EQ(newId, 77);
    EXPECT_EQ(Ids(*member), (std::vector<int>{1, 2}));
    EXPECT_EQ(Counter(*member), u"2"_s);
}

TEST(SMember, CopyGetsTheNextIdAndStandsBeforeTheLast)
{
    const auto member = OneAndTwo();
    member->GetConfig(2)->AddCondition(ConditionNode(u"A"_s, true, u"＝"_s, {}, {}, u"x"_s, {}, {}));
    member->GetConfig(2)->AddQd(QdStruct{});
    int newId = 0;
    EXPECT_TRUE(member->AddConfigByCopy(2, newId));
    EXPECT_EQ(newId, 3);
    EXPECT_EQ(Ids(*member), (std::vector<int>{1, 3, 2}));
    const ConfigNode* copy = member->GetConfig(3);
    EXPECT_EQ(copy->GetParent(), member.get());
    EXPECT_EQ(copy->GetConditionString(), u"A＝x;"_s);
    EXPECT_EQ(test::Ids(copy->GetCondition()), std::vector<int>{0});
    EXPECT_EQ(test::Ids(copy->GetQd()), std::vector<int>{1});
}

TEST(SMember, CopyOfTheDefaultRuleIsASecondDefaultRule)
{
    const auto member = Made(u"<SMember/>"_s);
    int newId = 0;
    EXPECT_TRUE(member->AddConfigByCopy(1, newId));
    EXPECT_EQ(Ids(*member), (std::vector<int>{2, 1}));
    EXPECT_TRUE(member->GetConfig(2)->IfDefault());
    EXPECT_TRUE(member->GetConfig(1)->IfDefault());
}

TEST(SMember, DeletingAnUnknownRuleIsTrue)
{
    const auto member = OneAndTwo();
    EXPECT_TRUE(member->DelConfig(9));
    EXPECT_EQ(Ids(*member), (std::vector<int>{1, 2}));
}

TEST(SMember, DeletingKeepsTheCounterAndHasNoGuardForTheDefaultRule)
{
    const auto member = OneAndTwo();
    EXPECT_TRUE(member->DelConfig(2));
    EXPECT_TRUE(member->DelConfig(1));
    EXPECT_TRUE(Ids(*member).empty());
    EXPECT_EQ(Counter(*member), u"2"_s);
}

TEST(SMember, DeletingARepeatedIdDeletesTheFirst)
{
    const auto member = Made(u"<SMember><Config><c id='1'/><c id='1' bDefault='1'/></Config></SMember>"_s);
    EXPECT_TRUE(member->DelConfig(1));
    ASSERT_EQ(member->GetAllConfig().size(), 1U);
    EXPECT_TRUE(member->GetConfig(1)->IfDefault());
}

TEST(SMember, DeletingAllRulesKeepsTheCounter)
{
    const auto member = OneAndTwo();
    member->DeleteAllConfig();
    EXPECT_TRUE(Ids(*member).empty());
    EXPECT_EQ(Counter(*member), u"2"_s);
}

TEST(SMember, IdOfADeletedLastRuleIsGivenOutAgainAfterAFile)
{
    const auto member = OneAndTwo();
    int newId = 0;
    member->AddConfig(AnyPath(), newId);
    ASSERT_EQ(newId, 3);
    member->DelConfig(3);
    SMember read;
    test::RoundTrip(*member, read);
    EXPECT_TRUE(read.AddConfig(AnyPath(), newId));
    EXPECT_EQ(newId, 3);
}

TEST(SMember, RulesMadeAtReadTimeAreWrittenUnderTheNameOfTheirContainer)
{
    const auto member = Made(u"<SMember name='管'><Config><config id='1' bDefault='1' LastQdId='0' "
                             "LastConditionId='0' LastDeId='0'/></Config></SMember>"_s);
    member->SetId(111);
    EXPECT_EQ(test::Written(*member),
              u"<n id=\"111\" name=\"管\" LastConfigId=\"1\">\n <Config>\n"
              "  <Config id=\"1\" LastQdId=\"0\" LastConditionId=\"0\" bDefault=\"1\" LastDeId=\"0\">\n"
              "   <Condition>\n   <Qd>\n   <De>\n"_s);
}

TEST(SMember, RulesOfEitherNameReadTheSame)
{
    const CString text = u"<SMember name='管'><Config><%1 id='1' bDefault='1'/></Config></SMember>"_s;
    EXPECT_EQ(test::Written(*Made(text.arg(u"config"_s))), test::Written(*Made(text.arg(u"Config"_s))));
}

TEST(SMember, NegativeAndHugeIdsAreKept)
{
    const auto member =
        Made(u"<SMember><Config><c id='-4'/><c id='2147483647' bDefault='1'/></Config></SMember>"_s);
    EXPECT_EQ(Ids(*member), (std::vector<int>{-4, 2147483647}));
    int newId = 0;
    EXPECT_TRUE(member->AddConfig(AnyPath(), newId));
    EXPECT_EQ(newId, -2147483647 - 1);
}

TEST(SMember, CommentInItsPlaceRaisesThePointerErrorSinceItTakesNoContainer)
{
    SMember member;
    EXPECT_THROW(member.ReadData(test::CommentNode()), xml::PointerError);
}
