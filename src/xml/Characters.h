#pragma once

#include <QtCore/QByteArray>

#include <cstddef>
#include <cstdint>

/// Characters of XML 1.0 (fifth edition) in UTF-8. All functions work on bytes that end in a NUL, which no
/// XML text holds and which therefore stops every walk.
namespace xml::detail {

/// One character and the number of bytes that it takes; 0 bytes when the bytes at that place are no UTF-8.
struct CodePoint
{
    std::uint32_t value = 0;
    std::size_t length = 0;
};

/// The character at `bytes`. Overlong forms, surrogates and values beyond U+10FFFF are no UTF-8.
CodePoint DecodeUtf8(const char* bytes) noexcept;

/// Whether the character may stand in an XML file at all.
bool IsXmlCharacter(std::uint32_t value) noexcept;

bool IsNameStart(std::uint32_t value) noexcept;
bool IsNameCharacter(std::uint32_t value) noexcept;

/// Space, tab, carriage return, line feed.
constexpr bool IsBlank(char c) noexcept
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

/// Whether all of `bytes` is one name. An unpaired surrogate that became a question mark on the way is none.
bool IsName(const QByteArray& bytes) noexcept;

/// The end of the name that begins at `bytes`, or `bytes` itself when none does.
const char* SkipName(const char* bytes) noexcept;

} // namespace xml::detail
