#pragma once

#include "host/Records.h"
#include "platform/Export.h"

namespace NvSysRuleData {

/// Calculation items of small categories.
class KTQDDE_EXPORT CFaceSysRule
{
public:
    CFaceSysRule() = delete;
    static bool GetCalItems(const CString& categoryText, CStringArray& items, CStringArray& other);
    static bool GetCalItemInfo(const CString& item, RuleCodeStruct& info);
};

} // namespace NvSysRuleData
