#include "host/TreeCategories.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace host {

bool IsInCategoryTree(const CString& smallCategory)
{
    const std::array leftOut{u"导线·导管"_s, u"配管配线"_s, u"组合管线"_s};
    return std::none_of(leftOut.begin(), leftOut.end(),
                        [&](const CString& part) { return smallCategory.contains(part); });
}

} // namespace host
