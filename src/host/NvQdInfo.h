#pragma once

#include "host/Records.h"
#include "platform/Export.h"

namespace NvQdInfo {

/// The current bill library.
class KTQDDE_EXPORT IBillLib
{
public:
    IBillLib() = delete;
    static bool GetQdInfo(const CString& number, SQdInfo& info);
    static bool IsInQdk(const CString& number);
    static void GetEnCodeRule(int& length, int& suffixLength);
};

} // namespace NvQdInfo
