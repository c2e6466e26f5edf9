#pragma once

#include "rules/model/Configuration.h"

/// The ids by which programs call the parts of a rule.
namespace rules {

/// Gives all parts of a rule that is new ids from 1 on, and its counters what they come to.
void NumberAnew(Rule& rule);

/// Gives ids to the parts of a rule that `former` becomes. Parts with an id that `former` has keep it, and so
/// does what it has without one; the others get new ids from its counters, which only grow.
void NumberParts(Rule& rule, const Rule& former);

} // namespace rules
