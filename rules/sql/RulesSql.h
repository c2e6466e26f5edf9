#pragma once

#include "rules/model/Configuration.h"
#include "rules/model/Facts.h"
#include "rules/sql/SqlOptions.h"

#include <map>

/// The rules of a configuration as one query, so that a database decides for a table of components what
/// docs/matching.md decides. docs/rules-sql.md tells the shape of the table and of the answer.
namespace rules {

/// One SELECT with a comment above that tells the columns it needs. Ends with a semicolon and a line break.
/// The same configuration always gives the same text. `facts` are those of the catalogue. Raises
/// `std::length_error`, with the value in words, when a condition's value is such a heap of marks that
/// nobody could write down all that is equal to it.
KTQDDE_RULES_EXPORT CString RulesSql(const Configuration& configuration, const CatalogueFacts& facts,
                                     const SqlOptions& options);

/// The columns of the components table that `RulesSql` reads beside 构件编号 and 类别, by the attribute in
/// compatibility normalisation that stands in them. The name differs from the attribute where the dialect
/// could not tell it from another one.
KTQDDE_RULES_EXPORT std::map<CString, CString>
SqlColumns(const Configuration& configuration, const CatalogueFacts& facts, const SqlOptions& options);

} // namespace rules
