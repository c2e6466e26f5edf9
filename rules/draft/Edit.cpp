#include "rules/draft/Edit.h"

namespace rules {

Edit Edit::Inverse() const
{
    Edit inverse{text, {}};
    inverse.splices.reserve(splices.size());
    for (auto splice = splices.rbegin(); splice != splices.rend(); ++splice)
        inverse.splices.push_back({splice->category, splice->position, splice->inserted, splice->removed});
    return inverse;
}

} // namespace rules
