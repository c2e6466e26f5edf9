#pragma once

#include "rules/check/CheckFacts.h"
#include "rules/check/Finding.h"
#include "rules/model/Configuration.h"
#include "rules/model/Structure.h"

namespace rules {

/// What is wrong with the rules of a configuration, in the order of the file: of the file as a whole first,
/// then category by category and rule by rule. docs/checks.md tells what each finding means. `structure` is
/// that of the file; empty for rules that come from none. The two operations below are parts of it.
KTQDDE_RULES_EXPORT std::vector<Finding> Check(const Configuration& configuration,
                                               const FileStructure& structure, const CheckFacts& facts);

/// What is wrong with the rules of one small category as they stand by themselves: which apply, their
/// conditions and items, default rules and ids. By position of the rule; what is about the whole category
/// first. For whoever checks while rules are edited: what `Check` says of the category, but for how the file
/// is built and for bill numbers, which take the other categories.
KTQDDE_RULES_EXPORT std::vector<Finding> CheckCategory(const SmallCategory& category,
                                                       const CheckFacts& facts);

/// Bill numbers that stand for different things in different rules of the configuration, in the order of the
/// file; none in quota mode.
KTQDDE_RULES_EXPORT std::vector<Finding> CheckBillNumbers(const Configuration& configuration,
                                                          const CheckFacts& facts);

} // namespace rules
