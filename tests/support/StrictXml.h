#pragma once

#include "platform/Text.h"
#include "support/PrintText.h"

#include <QtCore/QByteArray>

#include <gtest/gtest.h>

/// A second opinion on XML: a parser that shares nothing with the one under test.
namespace test {

/// Whether `bytes` are one well-formed XML document for a parser that repairs nothing and fetches nothing.
/// The failure message tells place and reason.
::testing::AssertionResult IsStrictXml(const QByteArray& bytes);

/// The document as text for comparing two of them: one node a line, indented by depth, elements with their
/// attributes in the order of the file, texts, CDATA sections, comments and processing instructions. Blank
/// text is left out. For bytes that are no document it is "not XML: " and the reason.
CString CanonicalXml(const QByteArray& bytes);

} // namespace test
