#pragma once

#include "platform/Export.h"

#include <QtCore/QStringView>

#include <cstdint>

/// Numbers in text, read the forgiving way of the rule files: leading blanks are skipped, one sign is taken,
/// then the leading digits count; what follows is ignored. Text without digits gives 0. Nothing is ever
/// raised. Only ASCII blanks (space, tab, line feed, vertical tab, form feed, carriage return), signs and
/// digits count.
namespace platform {

/// The leading decimal integer of `text`, saturating at the limits of 32 bits.
KTQDDE_EXPORT int _wtoi(QStringView text) noexcept;

/// The same as `_wtoi`: a long of the format has 32 bits on every platform.
KTQDDE_EXPORT std::int32_t _wtol(QStringView text) noexcept;

/// The leading decimal number of `text`, with an optional fraction and exponent, independent of the locale.
/// Too large gives an infinity of that sign, too small gives 0. Words such as "inf" and "nan" are no numbers.
KTQDDE_EXPORT double _wtof(QStringView text) noexcept;

} // namespace platform
