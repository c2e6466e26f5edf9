#pragma once

#include "cli/pricing/TakeoffRun.h"
#include "cli/reading/Arguments.h"
#include "cli/reading/Session.h"
#include "rules/bill/BillBuilder.h"

namespace cli {

/// `--config` of the verbs that price.
Option PricingConfigOption();

/// The rule file that `--config` names, or the current one; the mode of the project.
CString PricingFile(const Arguments& arguments);
rules::PricingMode ModeOf(const Session& session);

/// The rules of all categories of the project's catalogue as a rule file has them. Raises `Refusal`, with
/// place and reason, when it cannot be read.
rules::ConfigurationPtr ReadPricingRules(const CString& file, const Session& session);

/// The full text of a small category that a person names by it or by its own name. Raises `Refusal` when no
/// category or more than one is called that.
CString CategoryNamed(const CString& named, const rules::Configuration& configuration);

/// A take-off table and all that it is priced by: a rule file and the project. Raises as `ReadPricingRules`.
TakeoffJob JobFor(const CString& table, const CString& file, const Session& session);

} // namespace cli
