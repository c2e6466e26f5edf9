#pragma once

#include "host/NvKtDataMng.h"

namespace dialogs {

/// The mode of the project, asked anew at each call.
inline SQdDeInfo::EQdDeMode ProjectMode()
{
    return NvKtDataMng::CAtt().GetQdDeMode();
}

/// Whether rules show bill items. Every value other than `BillMode` counts as quota mode.
inline bool IsBillMode()
{
    return ProjectMode() == SQdDeInfo::BillMode;
}

/// Code of the quota library that the project's mode uses.
inline CString QuotaLibraryCode()
{
    const NvKtDataMng::CAtt host;
    return IsBillMode() ? host.GetQdDeCode() : host.GetDeCode();
}

} // namespace dialogs
