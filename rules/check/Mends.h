#pragma once

#include "rules/Export.h"
#include "rules/check/Finding.h"

#include <vector>

namespace rules {

/// The findings with a mend, in an order in which all these operations can be done one behind the other:
/// changes, then what is deleted from rules, then rules, then saves. What changes or deletes a part of
/// something that another one deletes is left out. The results point into `findings`.
KTQDDE_RULES_EXPORT std::vector<const Finding*> MendsInOrder(const std::vector<Finding>& findings);

} // namespace rules
