#pragma once

#include "rules/model/Configuration.h"

#include <QtCore/QByteArray>

#include <optional>

/// Rule files as people read them.
namespace shared {

/// All rules, one line for each rule, condition text first, and one for each of its items below it. Without
/// ids and positions, so that lines of two states differ where rules do and nowhere else. Small categories
/// that have nothing but an empty default rule are left out.
CStringArray RuleLines(const rules::Configuration& configuration);

/// What changed from one state of a rule file to another one, rule by rule, a line each. Nothing when one of
/// them cannot be read as a rule file.
std::optional<CStringArray> RuleChangeLines(const QByteArray& before, const QByteArray& after);

} // namespace shared
