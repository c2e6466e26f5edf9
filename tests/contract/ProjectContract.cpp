#include "HostContract.h"

#include "host/NvKtDataMng.h"
#include "host/NvKtProfile.h"
#include "platform/Paths.h"

using namespace Qt::StringLiterals;

namespace test {

using NvKtDataMng::CAtt;
using NvKtDataMng::CProj;

TEST_P(HostContract, ProjectPathHasAFolderAndAFileName)
{
    const CString path = CProj().GetPrjPath();
    EXPECT_FALSE(platform::FolderOf(path).isEmpty()) << path.toStdString();
    EXPECT_FALSE(platform::FileNameOf(path).isEmpty()) << path.toStdString();
}

TEST_P(HostContract, CurrentSpecialtysNameAndIdAgree)
{
    SNvKtSpecId id;
    EXPECT_TRUE(NvKtDataMng::SpecNameToId(CProj().GetCurrentSpec(), id));
    EXPECT_EQ(CProj().GetCurrentSpecId().strSpecId, id.strSpecId);
}

TEST_P(HostContract, ModeIsBillOrQuota)
{
    const int mode = CAtt().GetQdDeMode();
    EXPECT_TRUE(mode == SQdDeInfo::BillMode || mode == SQdDeInfo::QuotaMode) << mode;
}

TEST_P(HostContract, ApplicationFolderHasNoTrailingBackslash)
{
    const CString folder = NvKtProfile::GetAppProfile().GetAppFolder();
    EXPECT_FALSE(folder.isEmpty());
    EXPECT_FALSE(folder.endsWith(u'\\')) << folder.toStdString();
    EXPECT_FALSE(folder.contains(u'/')) << folder.toStdString();
}

TEST_P(HostContract, VersionIsKnown)
{
    EXPECT_FALSE(NvKtProfile::GetAppProfile().GetVersion().ToString().isEmpty());
}

} // namespace test
