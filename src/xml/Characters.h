#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

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

/// 3 when a character of U+1000 to U+CFFF or U+E000 to U+FFBF stands at `bytes`, else 0. XML allows all of
/// these, and nearly all characters of a rule file that are not ASCII are Chinese characters and signs among
/// them.
inline std::size_t ThreeByteLength(const char* bytes) noexcept
{
    const auto first = static_cast<unsigned char>(bytes[0]);
    if (first < 0xE1 || first > 0xEF || first == 0xED) return 0;
    const auto second = static_cast<unsigned char>(bytes[1]);
    if ((second & 0xC0U) != 0x80U || (first == 0xEF && second == 0xBF)) return 0;
    return (static_cast<unsigned char>(bytes[2]) & 0xC0U) == 0x80U ? 3 : 0;
}

/// Whether the character may stand in an XML file at all.
bool IsXmlCharacter(std::uint32_t value) noexcept;

bool IsNameStart(std::uint32_t value) noexcept;
bool IsNameCharacter(std::uint32_t value) noexcept;

/// Space, tab, carriage return, line feed.
constexpr bool IsBlank(char c) noexcept
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

/// What an ASCII byte may be in a name; nothing for the others, which are parts of characters.
enum AsciiNameByte : unsigned char { NotInName = 0, InName = 1, StartsName = 3 };
extern const std::array<unsigned char, 256> AsciiNameBytes;

/// As `SkipName`, for any name.
const char* SkipAnyName(const char* bytes) noexcept;

/// The end of the name that begins at `bytes`, or `bytes` itself when none does.
inline const char* SkipName(const char* bytes) noexcept
{
    // Nearly all names are ASCII throughout.
    const auto kind = [](const char* at) { return AsciiNameBytes[static_cast<unsigned char>(*at)]; };
    if (kind(bytes) != StartsName) return SkipAnyName(bytes);
    const char* at = bytes + 1;
    while (kind(at) != NotInName)
        ++at;
    return static_cast<unsigned char>(*at) < 0x80 ? at : SkipAnyName(bytes);
}

/// Whether a word of memory is the same at both places.
template <typename Word>
bool SameWord(const char* left, const char* right) noexcept
{
    Word a = 0;
    Word b = 0;
    std::memcpy(&a, left, sizeof a);
    std::memcpy(&b, right, sizeof b);
    return a == b;
}

/// The same for `size` bytes, at least one word: the last word overlaps the one before.
template <typename Word>
bool SameWords(const char* left, const char* right, std::size_t size) noexcept
{
    for (std::size_t i = 0; i + sizeof(Word) < size; i += sizeof(Word))
        if (!SameWord<Word>(left + i, right + i)) return false;
    return SameWord<Word>(left + size - sizeof(Word), right + size - sizeof(Word));
}

/// Whether `text` stands at `bytes`, of which there are as many: a comparison in place, for the few bytes of
/// a name.
inline bool SameBytes(const char* bytes, std::string_view text) noexcept
{
    const std::size_t size = text.size();
    if (size >= sizeof(std::uint64_t)) return SameWords<std::uint64_t>(bytes, text.data(), size);
    if (size >= sizeof(std::uint32_t)) return SameWords<std::uint32_t>(bytes, text.data(), size);
    for (std::size_t i = 0; i < size; ++i)
        if (bytes[i] != text[i]) return false;
    return true;
}

/// A set of bytes.
using ByteSet = std::array<bool, 256>;

/// The ASCII bytes that need no second look in a text, other than the `special` ones.
constexpr ByteSet PlainBytes(std::string_view special)
{
    ByteSet plain{};
    for (std::size_t c = 0x20; c < 0x80; ++c)
        plain[c] = special.find(static_cast<char>(c)) == std::string_view::npos;
    plain['\t'] = plain['\n'] = plain['\r'] = true;
    return plain;
}

/// What `IsBlank` says, for walks over many bytes.
constexpr ByteSet Blanks = [] {
    ByteSet blanks{};
    for (const char c : {' ', '\t', '\r', '\n'})
        blanks[static_cast<unsigned char>(c)] = true;
    return blanks;
}();

/// The first byte from `at` that is not in the set, which lacks the NUL.
constexpr const char* SkipPlain(const char* at, const ByteSet& plain) noexcept
{
    while (plain[static_cast<unsigned char>(*at)])
        ++at;
    return at;
}

} // namespace xml::detail
