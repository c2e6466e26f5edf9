#pragma once

#include "rules/check/Finding.h"

namespace cli {

/// What people and JSON call a severity.
CString SeverityText(rules::Severity severity);
CString SeverityWord(rules::Severity severity);

/// How many findings there are of each severity.
struct FindingCounts
{
    explicit FindingCounts(const std::vector<rules::Finding>& findings);

    int notes = 0;
    int warnings = 0;
    int errors = 0;

    int AtLeast(rules::Severity severity) const;
    CString Text() const;
};

/// The findings by category, a line each, and their number.
CString FindingsText(const std::vector<rules::Finding>& findings);

/// The findings as JSON, in the shape that docs/json.md describes.
CString FindingsJson(const std::vector<rules::Finding>& findings, const QString& file, bool isBillMode);

/// The operation that takes a finding away as a line of a batch, with its line end; empty for a finding
/// without one.
CString MendLine(const rules::Finding& finding);

} // namespace cli
