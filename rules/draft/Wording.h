#pragma once

#include "platform/Text.h"

#include <cstddef>

namespace rules {

/// What is done to so many rules: 删除规则, 删除 3 条规则.
inline CString Counted(const CString& verb, std::size_t rules)
{
    return rules == 1 ? verb + QStringLiteral("规则") : verb + QStringLiteral(" %1 条规则").arg(rules);
}

} // namespace rules
