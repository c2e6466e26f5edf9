#pragma once

#include "cli/reading/Arguments.h"

namespace cli {

/// Whether `import` or `export` is asked for rules and not for a table of the catalogue.
bool ConcernsRules(const Arguments& arguments);

/// The option that only rules have in both directions.
Option RuleFileOption();

/// `export rules FILE`: rules as a workbook or a CSV file, one line a rule. Raises `Refusal` for rules that
/// no table can say. Of categories that the catalogue has not standard error is told.
void ExportRules(const Arguments& arguments);

/// `import rules FILE`: the lists of the categories that the table names become its lines, all or nothing.
/// What has changed is told rule by rule.
void ImportRules(const Arguments& arguments);

} // namespace cli
