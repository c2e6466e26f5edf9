#pragma once

#include "rules/check/CellSpace.h"
#include "rules/check/CheckFacts.h"
#include "rules/check/FindingList.h"
#include "rules/check/ItemTexts.h"
#include "rules/model/Structure.h"

/// The checks by what they look at. Each appends what it finds.
namespace rules {

/// Which rules apply: hidden ones, what is left of others, the default rule, gaps.
void CheckApplication(const SmallCategory& category, const CellSpace& space, const CheckFacts& facts,
                      FindingList& findings);

/// The conditions of each rule.
void CheckConditions(const SmallCategory& category, const CellSpace& space, const CheckFacts& facts,
                     FindingList& findings);

/// The items of each rule.
void CheckItems(const SmallCategory& category, const CheckFacts& facts, ItemTexts& texts,
                FindingList& findings);

/// Default rules and ids of a category.
void CheckList(const SmallCategory& category, FindingList& findings);

/// How the file is built, and what the host does not know.
void CheckStructure(const Configuration& configuration, const FileStructure& structure,
                    const CheckFacts& facts, FindingList& findings);

} // namespace rules
