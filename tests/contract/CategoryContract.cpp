#include "HostContract.h"

#include "host/NvKtDataMng.h"
#include "platform/Numbers.h"

#include <QtCore/QSet>

#include <set>

using namespace Qt::StringLiterals;

namespace test {

using NvKtDataMng::CAtt;

namespace {

const CString UnknownSpecialty = u"没有这个专业"_s;

/// The level's own id of each category.
template <typename List, typename Field>
std::vector<CString> OwnIds(const List& list, Field field)
{
    std::vector<CString> ids;
    for (const auto& category : list)
        ids.push_back(category.id.*field);
    return ids;
}

/// Whether all are different decimal numbers above 0, as the tree needs them.
bool AreDistinctNumbers(const std::vector<CString>& ids)
{
    std::set<int> numbers;
    for (const CString& id : ids) {
        const int number = platform::_wtoi(id);
        if (number <= 0 || CString::number(number) != id) return false;
        numbers.insert(number);
    }
    return numbers.size() == ids.size();
}

template <typename List>
CStringArray FullNames(const List& list)
{
    CStringArray names;
    for (const auto& category : list)
        names.append(category.fullName);
    return names;
}

} // namespace

TEST_P(HostContract, IdsAreDistinctNumbers)
{
    EXPECT_TRUE(AreDistinctNumbers(OwnIds(AllSpecs(), &SNvKtSpecId::strSpecId)));
    EXPECT_TRUE(AreDistinctNumbers(OwnIds(AllBigs(), &SNvKtBigCategoryId::strBigCategoryId)));
    EXPECT_TRUE(AreDistinctNumbers(OwnIds(AllSmalls(), &SNvKtSmallCategoryId::strSmallCategoryId)));
}

TEST_P(HostContract, FullNamesLeadBackToTheIds)
{
    for (const auto& big : AllBigs()) {
        SNvKtBigCategoryId id;
        EXPECT_TRUE(NvKtDataMng::BigCategoryNameToId(big.fullName, id)) << big.fullName.toStdString();
        EXPECT_EQ(Fields(id), Fields(big.id));
    }
    for (const auto& small : AllSmalls()) {
        SNvKtSmallCategoryId id;
        EXPECT_TRUE(NvKtDataMng::SmallCategoryNameToId(small.fullName, id)) << small.fullName.toStdString();
        EXPECT_EQ(Fields(id), Fields(small.id));
    }
}

TEST_P(HostContract, FullNamesAreUniqueAndHaveOneNameALevel)
{
    const CStringArray smalls = FullNames(AllSmalls());
    EXPECT_EQ(QSet<CString>(smalls.begin(), smalls.end()).size(), smalls.size());
    for (const CString& name : smalls) {
        const CStringArray levels = name.split(u'\\');
        EXPECT_EQ(levels.size(), 3) << name.toStdString();
        EXPECT_FALSE(levels.contains(CString())) << name.toStdString();
    }
}

TEST_P(HostContract, SampleCategoryIsInTheLists)
{
    EXPECT_TRUE(FullNames(AllSmalls()).contains(Sample().SmallCategory()));
}

TEST_P(HostContract, OrderOfTheListsIsStable)
{
    EXPECT_EQ(FullNames(AllSpecs()), FullNames(AllSpecs()));
    EXPECT_EQ(FullNames(AllSmalls()), FullNames(AllSmalls()));
}

TEST_P(HostContract, CategoryListsReplaceWhatTheArgumentHeld)
{
    const SNvKtSmallCategoryId sample = SampleId();
    CStringArray names = {u"old"_s};
    EXPECT_TRUE(CAtt().GetAllSpecNames(names));
    EXPECT_FALSE(names.contains(u"old"_s));

    CArray<SNvKtBigCategoryId> bigs = {{u"old"_s, u"old"_s}};
    EXPECT_TRUE(CAtt().GetAllBigCategoryIdsBySpec({sample.strSpecId}, bigs));
    ASSERT_FALSE(bigs.isEmpty());
    EXPECT_NE(bigs.first().strBigCategoryId, u"old"_s);

    CArray<SNvKtSmallCategoryId> smalls = {{u"old"_s, u"old"_s, u"old"_s}};
    EXPECT_TRUE(
        CAtt().GetAllSmallCategoryIdsByBigCategory({sample.strSpecId, sample.strBigCategoryId}, smalls));
    ASSERT_FALSE(smalls.isEmpty());
    EXPECT_NE(smalls.first().strSmallCategoryId, u"old"_s);
}

TEST_P(HostContract, UnknownCategoryNamesAreFalseAndLeaveTheIdAlone)
{
    const CString sample = Sample().SmallCategory();
    const CString big = sample.section(u'\\', 0, 1);
    for (const CString& name : {CString(), UnknownSpecialty, big, sample.section(u'\\', 2), u'\\' + sample}) {
        SNvKtSpecId id{u"kept"_s};
        EXPECT_FALSE(NvKtDataMng::SpecNameToId(name, id)) << name.toStdString();
        EXPECT_EQ(Fields(id), u"kept"_s);
    }
    for (const CString& name :
         {CString(), UnknownSpecialty, sample, big + u'\\', sample.section(u'\\', 0, 0)}) {
        SNvKtBigCategoryId id{u"kept"_s, u"kept"_s};
        EXPECT_FALSE(NvKtDataMng::BigCategoryNameToId(name, id)) << name.toStdString();
        EXPECT_EQ(Fields(id), u"kept/kept"_s);
    }
    for (const CString& name : {CString(), UnknownSpecialty, big, sample + u'\\', sample.section(u'\\', 2)}) {
        SNvKtSmallCategoryId id{u"kept"_s, u"kept"_s, u"kept"_s};
        EXPECT_FALSE(NvKtDataMng::SmallCategoryNameToId(name, id)) << name.toStdString();
        EXPECT_EQ(Fields(id), u"kept/kept/kept"_s);
    }
}

TEST_P(HostContract, UnknownCategoryIdsAreFalseAndLeaveTheOutputAlone)
{
    const SNvKtBigCategoryId noBig{u"987654"_s, u"987654"_s};
    const SNvKtSmallCategoryId noSmall{u"987654"_s, u"987654"_s, u"987654"_s};
    CString name = u"kept"_s;
    EXPECT_FALSE(CAtt().GetBigCategoryName(noBig, name));
    EXPECT_FALSE(CAtt().GetBigCategoryName({}, name));
    EXPECT_FALSE(CAtt().GetSmallCategoryName(noSmall, name));
    EXPECT_FALSE(CAtt().GetSmallCategoryName({}, name));
    EXPECT_EQ(name, u"kept"_s);

    CArray<SNvKtBigCategoryId> bigs = {{u"kept"_s, u"kept"_s}};
    EXPECT_FALSE(CAtt().GetAllBigCategoryIdsBySpec({u"987654"_s}, bigs));
    EXPECT_EQ(bigs.size(), 1);
    CArray<SNvKtSmallCategoryId> smalls = {{u"kept"_s, u"kept"_s, u"kept"_s}};
    EXPECT_FALSE(CAtt().GetAllSmallCategoryIdsByBigCategory(noBig, smalls));
    EXPECT_EQ(smalls.size(), 1);
}

TEST_P(HostContract, UnknownTreePathHasNoIndexPath)
{
    EXPECT_EQ(NvKtDataMng::CSys().GetIndexPath(UnknownSpecialty + u'\\'), CString());
    EXPECT_EQ(NvKtDataMng::CSys().GetIndexPath(CString()), CString());
}

TEST_P(HostContract, IndexPathOfTheSampleIsJoinedByBackslashes)
{
    const CString path = NvKtDataMng::CSys().GetIndexPath(Sample().SmallCategory() + u'\\');
    EXPECT_GE(path.split(u'\\').size(), 2) << path.toStdString();
    EXPECT_FALSE(path.endsWith(u'\\')) << path.toStdString();
}

} // namespace test
