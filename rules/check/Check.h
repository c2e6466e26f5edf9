#pragma once

#include "rules/check/CheckFacts.h"
#include "rules/check/Finding.h"
#include "rules/model/Configuration.h"
#include "rules/model/Structure.h"

namespace rules {

/// What is wrong with the rules of a configuration, in the order of the file: of the file as a whole first,
/// then category by category and rule by rule. docs/checks.md tells what each finding means. `structure` is
/// that of the file; empty for rules that come from none.
KTQDDE_RULES_EXPORT std::vector<Finding> Check(const Configuration& configuration,
                                               const FileStructure& structure, const CheckFacts& facts);

} // namespace rules
