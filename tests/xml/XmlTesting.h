#pragma once

#include "xml/Dom.h"

#include <gtest/gtest.h>

namespace test {

/// The document of bytes that must be one.
inline xml::Document Parsed(const QByteArray& bytes)
{
    xml::Document document = xml::Document::Create();
    EXPECT_TRUE(document.LoadBytes(bytes)) << qPrintable(document.Reason().ToString());
    return document;
}

} // namespace test
