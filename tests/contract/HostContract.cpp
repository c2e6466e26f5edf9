#include "HostContract.h"

#include "host/NvKtDataMng.h"

using namespace Qt::StringLiterals;

namespace test {

using NvKtDataMng::CAtt;

HostContract::HostContract() : m_host(GetParam().make()), m_installed(host::Install(m_host->Roles())) {}

SNvKtSmallCategoryId HostContract::SampleId() const
{
    SNvKtSmallCategoryId id;
    EXPECT_TRUE(NvKtDataMng::SmallCategoryNameToId(m_host->SmallCategory(), id));
    return id;
}

std::vector<Category<SNvKtSpecId>> AllSpecs()
{
    CStringArray names;
    EXPECT_TRUE(CAtt().GetAllSpecNames(names));
    std::vector<Category<SNvKtSpecId>> all;
    for (const CString& name : names) {
        SNvKtSpecId id;
        EXPECT_TRUE(NvKtDataMng::SpecNameToId(name, id)) << name.toStdString();
        all.push_back({name, id});
    }
    EXPECT_FALSE(all.empty());
    return all;
}

std::vector<Category<SNvKtBigCategoryId>> AllBigs()
{
    std::vector<Category<SNvKtBigCategoryId>> all;
    for (const auto& spec : AllSpecs()) {
        CArray<SNvKtBigCategoryId> ids;
        EXPECT_TRUE(CAtt().GetAllBigCategoryIdsBySpec(spec.id, ids));
        for (const auto& id : ids) {
            CString name;
            EXPECT_TRUE(CAtt().GetBigCategoryName(id, name));
            all.push_back({spec.fullName + u'\\' + name, id});
        }
    }
    EXPECT_FALSE(all.empty());
    return all;
}

std::vector<Category<SNvKtSmallCategoryId>> AllSmalls()
{
    std::vector<Category<SNvKtSmallCategoryId>> all;
    for (const auto& big : AllBigs()) {
        CArray<SNvKtSmallCategoryId> ids;
        EXPECT_TRUE(CAtt().GetAllSmallCategoryIdsByBigCategory(big.id, ids));
        for (const auto& id : ids) {
            CString name;
            EXPECT_TRUE(CAtt().GetSmallCategoryName(id, name));
            all.push_back({big.fullName + u'\\' + name, id});
        }
    }
    EXPECT_FALSE(all.empty());
    return all;
}

CString Fields(const SNvKtSpecId& id)
{
    return id.strSpecId;
}

CString Fields(const SNvKtBigCategoryId& id)
{
    return id.strSpecId + u'/' + id.strBigCategoryId;
}

CString Fields(const SNvKtSmallCategoryId& id)
{
    return id.strSpecId + u'/' + id.strBigCategoryId + u'/' + id.strSmallCategoryId;
}

} // namespace test
