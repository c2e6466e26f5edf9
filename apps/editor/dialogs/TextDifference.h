#pragma once

#include "platform/Text.h"

#include <QtCore/QByteArray>

namespace editor {

/// What changed from one rule file to another one, rule by rule. Where one of them is none, what
/// `DescribeDifference` gives, under a line that says so.
CString DescribeRuleDifference(const QByteArray& before, const QByteArray& after);

/// What changed from one file to another, in words and lines a person can read: lines that went begin with
/// "- ", lines that came with "+ ". The bytes need be neither XML nor UTF-8.
CString DescribeDifference(const QByteArray& before, const QByteArray& after);

} // namespace editor
