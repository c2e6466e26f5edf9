#pragma once

#include "rules/check/Finding.h"

#include <QtGui/QIcon>

class QPalette;

/// How a finding looks wherever it is marked: in the list of findings, beside a rule, beside a category.
namespace editor {

/// 错误, 警告, 提示.
CString SeverityText(rules::Severity severity);

/// A mark that differs in shape and colour, and stands out from the background of lists of that palette.
QIcon SeverityIcon(rules::Severity severity, const QPalette& palette);

} // namespace editor
