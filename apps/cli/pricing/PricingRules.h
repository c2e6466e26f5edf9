#pragma once

#include "cli/reading/Arguments.h"
#include "cli/reading/Session.h"
#include "rules/bill/BillBuilder.h"
#include "shared/TakeoffRun.h"

namespace cli {

/// `--config` of the verbs that price.
Option PricingConfigOption();

/// `--sheet`, `--output` and `--force` of the verbs that read a table.
Option SheetOption();
Option OutputOption(const CString& help);
Option ForceOption();

/// The file that `--output` names, as a path text; empty for none. Raises `Refusal` when it stands there and
/// `--force` is not given, or is the table that is read.
CString OutputFile(const Arguments& arguments);

/// The full text of a small category that a person names by it or by its own name. Raises `Refusal` when
/// there is none, or several.
CString NamedCategory(const CString& named, const rules::Configuration& configuration);

/// The rule file that `--config` names, or the current one; the mode of the project.
CString PricingFile(const Arguments& arguments);
rules::PricingMode ModeOf(const Session& session);

/// The rules of all categories of the project's catalogue as a rule file has them. Raises `Refusal`, with
/// place and reason, when it cannot be read.
rules::ConfigurationPtr ReadPricingRules(const CString& file, const Session& session);

/// The same of rules that have been read.
rules::ConfigurationPtr PricingRulesOf(const rules::Configuration& read, const Session& session);

/// A take-off table and all that it is priced by: rules of all categories of the catalogue, and the project.
rules::TakeoffJob JobFor(const CString& table, rules::ConfigurationPtr configuration, const Session& session);
/// The same with the rules of a file. Raises as `ReadPricingRules`.
rules::TakeoffJob JobFor(const CString& table, const CString& file, const Session& session);

} // namespace cli
