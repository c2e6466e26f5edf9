#include "xml/Characters.h"

#include <algorithm>
#include <array>

namespace xml::detail {

namespace {

struct Range
{
    std::uint32_t first;
    std::uint32_t last;
};

/// NameStartChar beyond ASCII, ascending.
constexpr std::array<Range, 12> NameStartRanges{{{0xC0, 0xD6},
                                                 {0xD8, 0xF6},
                                                 {0xF8, 0x2FF},
                                                 {0x370, 0x37D},
                                                 {0x37F, 0x1FFF},
                                                 {0x200C, 0x200D},
                                                 {0x2070, 0x218F},
                                                 {0x2C00, 0x2FEF},
                                                 {0x3001, 0xD7FF},
                                                 {0xF900, 0xFDCF},
                                                 {0xFDF0, 0xFFFD},
                                                 {0x10000, 0xEFFFF}}};

constexpr bool IsAsciiLetter(std::uint32_t c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

constexpr bool IsAsciiNameCharacter(std::uint32_t c)
{
    return IsAsciiLetter(c) || (c >= '0' && c <= '9') || c == '_' || c == ':' || c == '-' || c == '.';
}

constexpr bool IsContinuation(unsigned char c)
{
    return (c & 0xC0U) == 0x80U;
}

} // namespace

constexpr std::array<unsigned char, 256> AsciiNameBytes = [] {
    std::array<unsigned char, 256> table{};
    for (std::uint32_t c = 0; c < 0x80; ++c) {
        if (IsAsciiNameCharacter(c)) table[c] = InName;
        if (IsAsciiLetter(c) || c == '_' || c == ':') table[c] = StartsName;
    }
    return table;
}();

CodePoint DecodeUtf8(const char* bytes) noexcept
{
    const auto at = [bytes](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const std::uint32_t first = at(0);
    if (first < 0x80) return {first, 1};
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4) return {};
    std::uint32_t value = first & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if (!IsContinuation(at(i))) return {}; // a NUL is none, so the walk stays inside
        value = (value << 6U) | (at(i) & 0x3FU);
    }
    const bool overlong = (length == 3 && value < 0x800) || (length == 4 && value < 0x10000);
    const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
    if (overlong || surrogate || value > 0x10FFFF) return {};
    return {value, length};
}

bool IsXmlCharacter(std::uint32_t value) noexcept
{
    if (value < 0x20) return value == '\t' || value == '\n' || value == '\r';
    return value <= 0xD7FF || (value >= 0xE000 && value <= 0xFFFD) || (value >= 0x10000 && value <= 0x10FFFF);
}

bool IsNameStart(std::uint32_t value) noexcept
{
    if (value < 0x80) return AsciiNameBytes[value] == StartsName;
    const auto range = std::lower_bound(NameStartRanges.begin(), NameStartRanges.end(), value,
                                        [](const Range& r, std::uint32_t v) { return r.last < v; });
    return range != NameStartRanges.end() && range->first <= value;
}

bool IsNameCharacter(std::uint32_t value) noexcept
{
    if (value < 0x80) return AsciiNameBytes[value] != NotInName;
    return value == 0xB7 || (value >= 0x300 && value <= 0x36F) || (value >= 0x203F && value <= 0x2040) ||
           IsNameStart(value);
}

const char* SkipAnyName(const char* bytes) noexcept
{
    CodePoint c = DecodeUtf8(bytes);
    if (c.length == 0 || !IsNameStart(c.value)) return bytes;
    do {
        bytes += c.length;
        c = DecodeUtf8(bytes);
    } while (c.length != 0 && IsNameCharacter(c.value));
    return bytes;
}

} // namespace xml::detail
