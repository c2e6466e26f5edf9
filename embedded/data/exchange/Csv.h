#pragma once

#include "platform/Text.h"

#include <QtCore/QByteArray>

namespace embedded {

/// A record of a CSV text.
struct CsvRecord
{
    int line = 0; ///< one-based, the line on which it begins
    CStringArray fields;
    CString fault; ///< what is wrong with its quotes; empty when nothing is
};

/// Takes a CSV text apart by RFC 4180: fields are separated by commas, a field in quotes may hold commas,
/// quotes (doubled) and line breaks. Lines may end in CR LF, LF or CR, the last one need not end, and empty
/// lines are passed over. A fault does not end the reading, but an unclosed quote reaches to the end.
CArray<CsvRecord> ParseCsv(const CString& text);

/// One record with its line end (CR LF). A field gets quotes when it needs them.
CString CsvLine(const CStringArray& fields);

} // namespace embedded
