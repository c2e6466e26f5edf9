#include "tree/Spec.h"

#include "TreeTesting.h"

#include "support/HostGuard.h"

using namespace Qt::StringLiterals;

// What becomes of the tree when operations of the host fail.

namespace {

/// The categories of a host that cannot list the small categories of the big category 12.
class WithoutOneList : public host::ICategories
{
public:
    explicit WithoutOneList(host::ICategories& target) : m_target(target) {}
    bool SpecNameToId(const CString& name, SNvKtSpecId& id) override
    {
        return m_target.SpecNameToId(name, id);
    }
    bool BigCategoryNameToId(const CString& name, SNvKtBigCategoryId& id) override
    {
        return m_target.BigCategoryNameToId(name, id);
    }
    bool SmallCategoryNameToId(const CString& name, SNvKtSmallCategoryId& id) override
    {
        return m_target.SmallCategoryNameToId(name, id);
    }
    bool GetAllSpecNames(CStringArray& names) override { return m_target.GetAllSpecNames(names); }
    bool GetAllBigCategoryIdsBySpec(const SNvKtSpecId& spec, CArray<SNvKtBigCategoryId>& ids) override
    {
        return m_target.GetAllBigCategoryIdsBySpec(spec, ids);
    }
    bool GetAllSmallCategoryIdsByBigCategory(const SNvKtBigCategoryId& big,
                                             CArray<SNvKtSmallCategoryId>& ids) override
    {
        return big.strBigCategoryId != u"12"_s && m_target.GetAllSmallCategoryIdsByBigCategory(big, ids);
    }
    bool GetBigCategoryName(const SNvKtBigCategoryId& id, CString& name) override
    {
        return m_target.GetBigCategoryName(id, name);
    }
    bool GetSmallCategoryName(const SNvKtSmallCategoryId& id, CString& name) override
    {
        return m_target.GetSmallCategoryName(id, name);
    }
    CString GetIndexPath(const CString& path) override { return m_target.GetIndexPath(path); }

protected:
    host::ICategories& Target() { return m_target; }

private:
    host::ICategories& m_target;
};

/// The categories of a host that lists the big category 12 and what is below it, but knows no id by its name.
class WithoutOneId : public WithoutOneList
{
public:
    using WithoutOneList::WithoutOneList;
    bool BigCategoryNameToId(const CString& name, SNvKtBigCategoryId& id) override
    {
        return name != u"给排水\\阀门"_s && WithoutOneList::BigCategoryNameToId(name, id);
    }
    bool GetAllSmallCategoryIdsByBigCategory(const SNvKtBigCategoryId& big,
                                             CArray<SNvKtSmallCategoryId>& ids) override
    {
        const bool isKnown = !big.strBigCategoryId.isEmpty();
        return Target().GetAllSmallCategoryIdsByBigCategory(
            isKnown ? big : SNvKtBigCategoryId{.strSpecId = u"1"_s, .strBigCategoryId = u"12"_s}, ids);
    }
};

class CategoryFailure : public ::testing::Test
{
protected:
    CategoryFailure() { m_spec.SetSpecName(u"给排水"_s); }

    bool ReadWithout(test::Operation operation, const CString& text = u"<x id='1'/>"_s)
    {
        m_host.Host().Fail(operation);
        return test::Read(m_spec, text);
    }

    test::HostGuard m_host;
    Spec m_spec;
};

} // namespace

TEST_F(CategoryFailure, NoListOfBigCategoriesGivesFalseAndNoCategories)
{
    EXPECT_FALSE(
        ReadWithout(test::Operation::GetAllBigCategoryIdsBySpec, u"<x id='4'><LMember name='管道'/></x>"_s));
    EXPECT_TRUE(m_spec.GetAllLMember().empty());
    EXPECT_EQ(m_spec.GetId(), 4);
}

TEST_F(CategoryFailure, NoListOfSmallCategoriesTakesTheBigCategoryOutOfTheTreeOnly)
{
    // The host knows the big category by name, and lists nothing for the other one.
    m_host.Host().AddBig(u"1"_s, u"13"_s, u"设备"_s);
    m_host.Host().AddSmall(u"13"_s, u"131"_s, u"水泵"_s);
    WithoutOneList categories(m_host.Host());
    host::Roles roles = m_host.Host().Roles();
    roles.categories = &categories;
    const host::Installation installed = host::Install(roles);

    EXPECT_TRUE(test::Read(m_spec, u"<x id='1'/>"_s));
    EXPECT_EQ(test::Ids(m_spec.GetAllLMember()), (std::vector<int>{11, 13}));
    EXPECT_EQ(test::Ids(m_spec.GetLMember(13)->GetAllSMember()), std::vector<int>{131});
}

TEST_F(CategoryFailure, NoIdOfASmallCategoryGivesZeroUnnoticed)
{
    EXPECT_TRUE(ReadWithout(test::Operation::SmallCategoryNameToId));
    EXPECT_EQ(test::Ids(m_spec.GetLMember(11)->GetAllSMember()), (std::vector<int>{0, 0}));
    EXPECT_EQ(m_spec.GetLMember(11)->GetAllSMember().front()->GetName(), u"给水管"_s);
}

TEST_F(CategoryFailure, NoNameOfASmallCategoryGivesTheEmptyNameUnnoticed)
{
    EXPECT_TRUE(ReadWithout(test::Operation::GetSmallCategoryName));
    EXPECT_EQ(test::Ids(m_spec.GetLMember(11)->GetAllSMember()), (std::vector<int>{0, 0}));
    for (const SMember* small : m_spec.GetLMember(11)->GetAllSMember()) {
        EXPECT_EQ(small->GetName(), CString());
        EXPECT_EQ(test::Ids(small->GetAllConfig()), std::vector<int>{1});
    }
}

TEST_F(CategoryFailure, NoIdOfABigCategoryLeavesItOutSinceNothingIsListedForIt)
{
    EXPECT_TRUE(ReadWithout(test::Operation::BigCategoryNameToId));
    EXPECT_TRUE(m_spec.GetAllLMember().empty());
}

TEST_F(CategoryFailure, UnknownIdOfABigCategoryThatIsListedAllTheSameIsZero)
{
    WithoutOneId categories(m_host.Host());
    host::Roles roles = m_host.Host().Roles();
    roles.categories = &categories;
    const host::Installation installed = host::Install(roles);

    const test::Page page(u"<x/>"_s);
    EXPECT_TRUE(m_spec.ReadData(page.Root()));
    ASSERT_EQ(test::Ids(m_spec.GetAllLMember()), (std::vector<int>{11, 0}));
    EXPECT_EQ(m_spec.GetLMember(0)->GetName(), u"阀门"_s);
    EXPECT_EQ(test::Ids(m_spec.GetLMember(0)->GetAllSMember()), std::vector<int>{121});
    EXPECT_TRUE(page.Canonical().contains(u"<LMember id=\"0\" name=\"阀门\">"_s));
}

TEST_F(CategoryFailure, NoNameOfABigCategoryMakesAnElementWithIdZeroAndAnEmptyName)
{
    m_host.Host().Fail(test::Operation::GetBigCategoryName);
    const test::Page page(u"<x/>"_s);
    EXPECT_TRUE(m_spec.ReadData(page.Root()));
    EXPECT_TRUE(m_spec.GetAllLMember().empty());
    EXPECT_EQ(page.Canonical(), u"<x>\n <LMember id=\"0\" name=\"\">\n <LMember id=\"0\" name=\"\">\n"_s);
}

TEST_F(CategoryFailure, NoIdOfTheSpecialtyGivesFalseSinceNothingIsListedForIt)
{
    EXPECT_FALSE(ReadWithout(test::Operation::SpecNameToId));
    EXPECT_TRUE(m_spec.GetAllLMember().empty());
}

TEST_F(CategoryFailure, RecoveredHostIsReadAgainAfterTheTreeIsEmptied)
{
    EXPECT_FALSE(ReadWithout(test::Operation::GetAllBigCategoryIdsBySpec));
    m_host.Host().Work(test::Operation::GetAllBigCategoryIdsBySpec);
    m_spec.DeleteAllLMember();
    EXPECT_TRUE(test::Read(m_spec, u"<x id='1'/>"_s));
    EXPECT_EQ(test::Ids(m_spec.GetAllLMember()), (std::vector<int>{11, 12}));
}
