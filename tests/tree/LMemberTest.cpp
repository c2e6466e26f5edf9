#include "tree/LMember.h"

#include "TreeTesting.h"

#include "support/HostGuard.h"
#include "tree/Spec.h"

using namespace Qt::StringLiterals;

namespace {

/// The big category 管道 of 给排水, read on its own.
class LMemberRead : public ::testing::Test
{
protected:
    LMemberRead()
    {
        m_spec.SetSpecName(u"给排水"_s);
        m_member.SetParent(&m_spec);
        m_member.SetName(u"管道"_s);
        m_member.SetId(11);
    }

    test::HostGuard m_host;
    Spec m_spec;
    LMember m_member;
};

} // namespace

TEST_F(LMemberRead, IdAndNameOfTheFileAreNotRead)
{
    EXPECT_TRUE(test::Read(m_member, u"<LMember id='99' name='别的'/>"_s));
    EXPECT_EQ(m_member.GetId(), 11);
    EXPECT_EQ(m_member.GetName(), u"管道"_s);
}

TEST_F(LMemberRead, ChildrenMadeInTheDocumentHaveANameAndNoId)
{
    const test::Page page(
        u"<LMember name='管道'><SMember name='排水管'><Config><c bDefault='1'/></Config></SMember>"
        "</LMember>"_s);
    EXPECT_TRUE(m_member.ReadData(page.Root()));
    EXPECT_TRUE(page.Canonical().contains(u" <SMember name=\"给水管\">\n"_s));
}

TEST_F(LMemberRead, WritesIdNameAndSmallCategoriesWithoutContainer)
{
    m_host.Host().RemoveSmall(u"111"_s);
    test::Read(m_member, u"<LMember/>"_s);
    EXPECT_TRUE(
        test::Written(m_member).startsWith(u"<n id=\"11\" name=\"管道\">\n"
                                           " <SMember id=\"112\" name=\"排水管\" LastConfigId=\"1\">\n"
                                           "  <Config>\n   <Config id=\"1\" "_s));
}

TEST_F(LMemberRead, DeletingAllSmallCategoriesEmptiesTheList)
{
    test::Read(m_member, u"<LMember/>"_s);
    EXPECT_EQ(test::Ids(m_member.GetAllSMember()), (std::vector<int>{111, 112}));
    m_member.DeleteAllSMember();
    EXPECT_TRUE(m_member.GetAllSMember().empty());
}

TEST_F(LMemberRead, WithoutAListOfTheHostReadingIsFalse)
{
    m_host.Host().Fail(test::Operation::GetAllSmallCategoryIdsByBigCategory);
    EXPECT_FALSE(test::Read(m_member, u"<LMember name='管道'><SMember name='给水管'/></LMember>"_s));
    EXPECT_TRUE(m_member.GetAllSMember().empty());
}
