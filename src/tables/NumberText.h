#pragma once

#include "platform/Text.h"

#include <QtCore/QByteArrayView>

#include <optional>

/// Numbers as texts: digits with at most one point, a sign only when negative, no exponent, no zeros that say
/// nothing. One number has one text, so that texts can be compared.
namespace tables {

/// A binary number keeps every decimal number of so many digits; one of more may come back as another.
inline constexpr int ExactDigits = 15;

/// The shortest form of a number as workbooks store it ("5E1", "50.0", "0.10000000000000001"); nothing when
/// it is none. Plain numbers of up to 15 digits, and whole ones of any length, keep every digit; others are
/// those of the binary number nearest to them.
std::optional<CString> NumberText(QByteArrayView stored);

/// Whether `text` is a number in its shortest form.
bool IsShortestNumber(QStringView text);
bool IsShortestNumber(QByteArrayView text);

/// The significant digits of a number in its shortest form: those from the first to the last one that is not
/// 0.
int SignificantDigits(QStringView number);

} // namespace tables
