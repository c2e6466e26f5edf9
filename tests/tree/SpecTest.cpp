#include "tree/Spec.h"

#include "TreeTesting.h"

#include "support/HostGuard.h"

using namespace Qt::StringLiterals;

namespace {

class SpecRead : public ::testing::Test
{
protected:
    SpecRead() { m_spec.SetSpecName(u"给排水"_s); }

    /// The categories of the tree: big ones with "name=id", small ones below them after a blank.
    CStringArray Categories() const
    {
        CStringArray lines;
        for (const LMember* big : m_spec.GetAllLMember()) {
            lines << u"%1=%2"_s.arg(big->GetName()).arg(big->GetId());
            for (const SMember* small : big->GetAllSMember())
                lines << u" %1=%2"_s.arg(small->GetName()).arg(small->GetId());
        }
        return lines;
    }

    static CStringArray CategoriesOfTheHost()
    {
        return {u"管道=11"_s, u" 给水管=111"_s, u" 排水管=112"_s, u"阀门=12"_s, u" 截止阀=121"_s};
    }

    const SMember& Small(int big, int small) const { return *m_spec.GetLMember(big)->GetSMember(small); }

    test::HostGuard m_host;
    Spec m_spec;
};

} // namespace

TEST_F(SpecRead, EmptyElementGivesTheHostsCategoriesEachWithItsDefaultRule)
{
    EXPECT_TRUE(test::Read(m_spec, u"<给排水 id='1' name='给排水'/>"_s));
    EXPECT_EQ(Categories(), CategoriesOfTheHost());
    for (const LMember* big : m_spec.GetAllLMember())
        for (const SMember* small : big->GetAllSMember()) {
            ASSERT_EQ(test::Ids(small->GetAllConfig()), std::vector<int>{1});
            EXPECT_TRUE(small->GetConfig(1)->IfDefault());
        }
}

TEST_F(SpecRead, CategoryThatTheFileLacksHasOneDefaultRuleAndCounterOne)
{
    EXPECT_TRUE(test::Read(
        m_spec, u"<x id='1'><LMember name='管道'><SMember name='给水管'><Config>"
                "<Config id='5'/><Config id='1' bDefault='1'/></Config></SMember></LMember></x>"_s));
    EXPECT_EQ(test::Ids(Small(11, 111).GetAllConfig()), (std::vector<int>{5, 1}));
    EXPECT_EQ(test::Ids(Small(11, 112).GetAllConfig()), std::vector<int>{1});
    EXPECT_TRUE(test::Written(m_spec).contains(u"<SMember id=\"112\" name=\"排水管\" LastConfigId=\"1\">"_s));
}

TEST_F(SpecRead, CategoryThatTheHostLacksIsNeitherReadNorWritten)
{
    EXPECT_TRUE(test::Read(m_spec, u"<x><LMember name='管道'><SMember name='风管'/></LMember>"
                                   "<LMember name='设备'><SMember name='水泵'/></LMember></x>"_s));
    EXPECT_EQ(Categories(), CategoriesOfTheHost());
    const CString written = test::Written(m_spec);
    EXPECT_FALSE(written.contains(u"风管"_s) || written.contains(u"设备"_s) || written.contains(u"水泵"_s));
}

TEST_F(SpecRead, OrderIsTheHostsWhateverTheFileHas)
{
    EXPECT_TRUE(test::Read(m_spec, u"<x><LMember name='阀门'/><LMember name='管道'><SMember name='排水管'/>"
                                   "<SMember name='给水管'/></LMember></x>"_s));
    EXPECT_EQ(Categories(), CategoriesOfTheHost());
}

TEST_F(SpecRead, OfEqualNamesTheFirstIsRead)
{
    test::Read(m_spec,
               u"<x><LMember name='管道'><SMember name='给水管'><Config><c id='4' bDefault='1'/></Config>"
               "</SMember><SMember name='给水管'><Config><c id='5' bDefault='1'/></Config></SMember>"
               "</LMember><LMember name='管道'><SMember name='排水管'><Config><c id='6' bDefault='1'/>"
               "</Config></SMember></LMember></x>"_s);
    EXPECT_EQ(test::Ids(Small(11, 111).GetAllConfig()), std::vector<int>{4});
    EXPECT_EQ(test::Ids(Small(11, 112).GetAllConfig()), std::vector<int>{1});
}

TEST_F(SpecRead, ElementWithoutNameIsPassedOver)
{
    test::Read(m_spec,
               u"<x><LMember id='11'><SMember name='给水管'/></LMember><LMember name='管道'>"
               "<SMember id='111'><Config><c id='4' bDefault='1'/></Config></SMember></LMember></x>"_s);
    EXPECT_EQ(Categories(), CategoriesOfTheHost());
    EXPECT_EQ(test::Ids(Small(11, 111).GetAllConfig()), std::vector<int>{1});
}

TEST_F(SpecRead, NamesAreComparedExactlyAndTagsNotAtAll)
{
    test::Read(m_spec,
               u"<x><any name='管道'><thing name='给水管'><Config><c id='4' bDefault='1'/></Config></thing>"
               "<SMember name=' 排水管'><Config><c id='5' bDefault='1'/></Config></SMember></any></x>"_s);
    EXPECT_EQ(test::Ids(Small(11, 111).GetAllConfig()), std::vector<int>{4});
    EXPECT_EQ(test::Ids(Small(11, 112).GetAllConfig()), std::vector<int>{1});
}

TEST_F(SpecRead, CommentsAndTextBetweenCategoriesArePassedOver)
{
    EXPECT_TRUE(test::Read(m_spec,
                           u"<x><!--c-->文<?p i?><LMember name='管道'>文<!--c--><SMember name='给水管'>"
                           "文<!--c--><Config><c id='4' bDefault='1'/></Config></SMember></LMember></x>"_s));
    EXPECT_EQ(Categories(), CategoriesOfTheHost());
    EXPECT_EQ(test::Ids(Small(11, 111).GetAllConfig()), std::vector<int>{4});
}

TEST_F(SpecRead, IdOfTheSpecialtyComesFromTheFileAndThoseOfCategoriesFromTheHost)
{
    test::Read(m_spec,
               u"<x id='77'><LMember id='5' name='管道'><SMember id='6' name='给水管'/></LMember></x>"_s);
    EXPECT_EQ(m_spec.GetId(), 77);
    EXPECT_EQ(Categories(), CategoriesOfTheHost());
}

TEST_F(SpecRead, MissingIdOfTheSpecialtyReadsAsZero)
{
    test::Read(m_spec, u"<x name='给排水'/>"_s);
    EXPECT_EQ(m_spec.GetId(), 0);
}

TEST_F(SpecRead, ParentsLeadFromTheRuleToTheSpecialty)
{
    test::Read(m_spec, u"<x/>"_s);
    const QdDeConfigNode* rule = Small(11, 111).GetConfig(1);
    EXPECT_EQ(rule->GetParent(), &Small(11, 111));
    EXPECT_EQ(rule->GetParent()->GetParent(), m_spec.GetLMember(11));
    EXPECT_EQ(rule->GetParent()->GetParent()->GetParent(), &m_spec);
    EXPECT_EQ(m_spec.GetParent(), nullptr);
}

TEST_F(SpecRead, SwapExchangesIdNameAndCategoriesWhoseParentsFollow)
{
    test::Read(m_spec, u"<x id='77'/>"_s);
    Spec other;
    other.SetSpecName(u"电气"_s);
    other.SetId(5);
    m_spec.Swap(other);
    EXPECT_EQ(m_spec.GetId(), 5);
    EXPECT_EQ(m_spec.GetSpecName(), u"电气"_s);
    EXPECT_EQ(Categories(), CStringArray());
    EXPECT_EQ(other.GetId(), 77);
    EXPECT_EQ(other.GetSpecName(), u"给排水"_s);
    ASSERT_EQ(other.GetAllLMember().size(), 2U);
    for (const LMember* big : other.GetAllLMember())
        EXPECT_EQ(big->GetParent(), &other);
    m_spec.Swap(other);
    EXPECT_EQ(Categories(), CategoriesOfTheHost());
    EXPECT_EQ(m_spec.GetLMember(11)->GetParent(), &m_spec);
}

TEST_F(SpecRead, UnknownIdsLeadToNull)
{
    test::Read(m_spec, u"<x/>"_s);
    EXPECT_EQ(m_spec.GetLMember(13), nullptr);
    EXPECT_EQ(m_spec.GetLMember(11)->GetSMember(121), nullptr);
    EXPECT_EQ(Small(11, 111).GetConfig(2), nullptr);
}

TEST_F(SpecRead, ReadingCompletesTheDocumentWithBareCategories)
{
    m_host.Host().RemoveSmall(u"112"_s);
    m_host.Host().RemoveSmall(u"121"_s);
    const test::Page page(u"<x><LMember name='阀门'/></x>"_s);
    EXPECT_TRUE(m_spec.ReadData(page.Root()));
    EXPECT_EQ(
        page.Canonical(),
        u"<x>\n <LMember name=\"阀门\">\n <LMember id=\"11\" name=\"管道\">\n  <SMember name=\"给水管\">\n"
        "   <Config>\n    <config id=\"1\" bDefault=\"1\" LastQdId=\"0\" LastConditionId=\"0\" "
        "LastDeId=\"0\">\n"_s);
}

TEST_F(SpecRead, WritesIdNameAndItsCategoriesWithoutContainers)
{
    m_host.Host().RemoveSmall(u"111"_s);
    m_host.Host().RemoveSmall(u"112"_s);
    test::Read(m_spec, u"<x id='1'/>"_s);
    EXPECT_EQ(
        test::Written(m_spec),
        u"<n id=\"1\" name=\"给排水\">\n <LMember id=\"11\" name=\"管道\">\n"
        " <LMember id=\"12\" name=\"阀门\">\n  <SMember id=\"121\" name=\"截止阀\" LastConfigId=\"1\">\n"
        "   <Config>\n    <Config id=\"1\" LastQdId=\"0\" LastConditionId=\"0\" bDefault=\"1\" "
        "LastDeId=\"0\">\n"
        "     <Condition>\n     <Qd>\n     <De>\n"_s);
}

TEST_F(SpecRead, DeletingAllCategoriesEmptiesTheTree)
{
    test::Read(m_spec, u"<x/>"_s);
    m_spec.DeleteAllLMember();
    EXPECT_TRUE(Categories().isEmpty());
    EXPECT_EQ(m_spec.GetSpecName(), u"给排水"_s);
}

TEST_F(SpecRead, AssignmentDestroysItsOwnChildrenAndTakesTheOthersOver)
{
    // Both share their children from here on and only one may be destroyed: the source stays for good.
    static Spec& source = *new Spec;
    source.SetSpecName(u"电气"_s);
    test::Read(source, u"<x id='3'/>"_s);
    test::Read(m_spec, u"<x/>"_s);
    m_spec = source;
    EXPECT_EQ(m_spec.GetId(), 3);
    EXPECT_EQ(m_spec.GetSpecName(), u"电气"_s);
    EXPECT_EQ(m_spec.GetAllLMember(), source.GetAllLMember());
    EXPECT_EQ(Categories(), CStringArray({u"电缆桥架=21"_s, u" 桥架=211"_s, u" 托盘=212"_s}));
}

TEST_F(SpecRead, AssignmentToItselfKeepsTheChildren)
{
    test::Read(m_spec, u"<x/>"_s);
    const Spec& self = m_spec;
    m_spec = self;
    EXPECT_EQ(Categories(), CategoriesOfTheHost());
}

TEST_F(SpecRead, NameAttributeIsFoundByItsExactSpellingOnly)
{
    for (const CString& spelling : {u"Name"_s, u"NAME"_s, u"name-"_s, u"n:name"_s}) {
        m_spec.DeleteAllLMember();
        test::Read(m_spec, u"<x><LMember name='管道'><SMember %1='给水管'><Config><c id='4' bDefault='1'/>"
                           "</Config></SMember></LMember></x>"_s.arg(spelling));
        EXPECT_EQ(test::Ids(Small(11, 111).GetAllConfig()), std::vector<int>{1}) << spelling.toStdString();
    }
}
