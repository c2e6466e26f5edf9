#include "embedded/data/project/ProposedNumbers.h"

#include "embedded/TestProject.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::TestProject;

namespace {

/// A dialog for bill numbers over the default host, as far as it asks: it begins to propose, and the item of
/// the picked number is looked up once the person has accepted.
class ProposedNumbers : public ::testing::Test
{
protected:
    ProposedNumbers() { m_project.Put(); }

    void UseCodingRule(int length, int suffixLength, const CString& suffixOfItems)
    {
        m_project.Sql(u"app\\catalogue.db"_s, u"UPDATE bill_items SET number = number || '%1' "
                                              "WHERE number LIKE '030901%'"_s.arg(suffixOfItems));
        m_project.Sql(
            u"app\\catalogue.db"_s,
            u"UPDATE libraries SET code_length = %1, suffix_length = %2"_s.arg(length).arg(suffixLength));
    }
    host::ILibraries& Libraries()
    {
        if (!m_host) m_host.emplace(m_project.Folder());
        return *m_host->Roles().libraries;
    }
    CStringArray Known(const CString& base)
    {
        CArray<SQdInfo> items;
        EXPECT_TRUE(Libraries().GetQdInfoByQdNum(base, items));
        CStringArray numbers;
        for (const SQdInfo& item : items)
            numbers.append(item.strNumber);
        return numbers;
    }
    void Accept(const CString& picked)
    {
        SQdInfo info;
        EXPECT_TRUE(Libraries().GetQdInfo(picked, info)) << picked.toStdString();
    }

    TestProject m_project;
    std::optional<embedded::EmbeddedHost> m_host;
};

const CString Base = u"030901001"_s;

} // namespace

TEST_F(ProposedNumbers, CountFromTheMomentTheyAreAcceptedUntilTheyAreForgotten)
{
    EXPECT_EQ(Known(Base), CStringArray());
    EXPECT_EQ(Known(Base), CStringArray()) << "cancelled";
    Accept(Base);
    EXPECT_EQ(Known(Base), CStringArray{u"030901001001"_s});
    Accept(Base);
    EXPECT_EQ(Known(Base), (CStringArray{u"030901001001"_s, u"030901001002"_s}));
    m_host->ForgetProposedNumbers();
    EXPECT_EQ(Known(Base), CStringArray());
}

TEST_F(ProposedNumbers, LookUpOfAnItemThatNothingWasProposedForCountsNothing)
{
    Accept(Base);
    EXPECT_EQ(Known(Base), CStringArray());
    Accept(u"030901002"_s);
    EXPECT_EQ(Known(u"030901002"_s), CStringArray());
    Accept(u"030901002"_s);
    Accept(u"030901002"_s);
    EXPECT_EQ(Known(u"030901002"_s), CStringArray{u"030901002001"_s}) << "once";
}

TEST_F(ProposedNumbers, OfOneLibraryAreNotThoseOfAnother)
{
    Known(Base);
    Accept(Base);
    m_host->SetLibrary(embedded::LibraryRole::Bill, u"GB50500-2008"_s);
    EXPECT_EQ(Known(Base), CStringArray());
    m_host->SetLibrary(embedded::LibraryRole::Bill, u"GB50856-2013"_s);
    EXPECT_EQ(Known(Base), CStringArray{u"030901001001"_s});
}

// After a suffix of a wrong length the dialog proposes the one behind the highest.
TEST_F(ProposedNumbers, UnderARuleThatKeepsPickedSuffixesTheKeptOneCountsAndOthersStayFree)
{
    UseCodingRule(12, 3, u"005"_s);
    Known(Base);
    Accept(Base + u"005"_s);
    EXPECT_EQ(Known(Base), CStringArray{u"030901001005"_s});
    Accept(Base + u"005"_s);
    EXPECT_EQ(Known(Base), (CStringArray{u"030901001005"_s, u"030901001006"_s}));
}

TEST_F(ProposedNumbers, UnderARuleOfOneCharacterTheBaseIsThePickedNumberWithoutIt)
{
    UseCodingRule(12, 1, u"001"_s);
    Known(u"03090100100"_s);
    Accept(Base + u"001"_s);
    EXPECT_EQ(Known(u"03090100100"_s), CStringArray{u"030901001001"_s});
}
