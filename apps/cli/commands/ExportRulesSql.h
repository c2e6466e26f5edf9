#pragma once

#include "cli/reading/Arguments.h"

namespace cli {

/// The word after `export` that asks for the rules as a query.
inline const CString RulesSqlWord = QStringLiteral("rules-sql");

/// The options of `export` that belong to it alone.
CArray<Option> RulesSqlOptions();

/// `export rules-sql`: writes the rules of a rule file as one query for a database. Raises as
/// `Command::Run` does.
void ExportRulesSql(const Arguments& arguments);

} // namespace cli
