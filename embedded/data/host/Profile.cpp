#include "embedded/data/host/Profile.h"

#include <utility>

namespace embedded {

Profile::Profile(CString appFolder) : m_appFolder(std::move(appFolder)) {}

CString Profile::GetAppFolder()
{
    return m_appFolder;
}

CNvKtVersion Profile::GetVersion()
{
    return CNvKtVersion(CString::fromLatin1(KTQDDE_VERSION));
}

} // namespace embedded
