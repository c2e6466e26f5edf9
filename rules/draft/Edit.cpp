#include "rules/draft/Edit.h"

#include <algorithm>

namespace rules {

Edit Edit::Inverse() const
{
    Edit inverse{text, {}};
    inverse.splices.reserve(splices.size());
    for (const Splice& splice : splices)
        inverse.splices.push_back({splice.category, splice.position, splice.inserted, splice.removed});
    std::reverse(inverse.splices.begin(), inverse.splices.end());
    return inverse;
}

} // namespace rules
