#pragma once

#include "platform/Export.h"
#include "platform/Text.h"

namespace host {

/// Whether the tree of rules shows small categories of that name. It leaves out those whose rules are
/// nobody's to edit: with "导线·导管", "配管配线" or "组合管线" in the name.
KTQDDE_EXPORT bool IsInCategoryTree(const CString& smallCategory);

} // namespace host
