#pragma once

#include "rules/model/Configuration.h"

/// What a rule says, apart from the ids by which programs call it and its parts.
namespace rules {

/// Whether all that the rule file has of the two is the same but for ids and counters: conditions and items,
/// in their order, with every field, leftovers of another form included.
bool HasSameContent(const Condition& a, const Condition& b);
bool HasSameContent(const QuotaItem& a, const QuotaItem& b);
bool HasSameContent(const BillItem& a, const BillItem& b);
bool HasSameContent(const Rule& a, const Rule& b);

/// The same for default rules, and for rules that have the same conditions in any order: of two such rules in
/// one list the second never applies.
CString ConditionsKey(const Rule& rule);

/// The same for all rules of the same content.
std::size_t ContentHash(const Rule& rule);

/// A default rule without items, as programs make it where a category has none.
Rule BareDefault();
/// Whether it is a default rule without items, as programs make it where a category has none.
bool IsBareDefault(const Rule& rule);
/// Whether it is all that the category has.
bool HoldsBareDefaultAlone(const SmallCategory& category);

/// How many rules there are, as people count them: a default rule without items that is alone in its category
/// says nothing and is none.
std::size_t CountOf(const SmallCategory& category);
std::size_t CountOf(const Specialty& specialty);

} // namespace rules
