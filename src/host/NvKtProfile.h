#pragma once

#include "host/Roles.h"
#include "platform/Export.h"

using host::INvKtAppProfile;

namespace NvKtProfile {

/// The host's one application profile; raises `host::NoHostError` when no host is installed.
KTQDDE_EXPORT INvKtAppProfile& GetAppProfile();

} // namespace NvKtProfile
