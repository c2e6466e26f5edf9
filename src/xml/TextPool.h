#pragma once

#include "platform/Text.h"

#include <array>
#include <cstddef>
#include <vector>

namespace xml::detail {

/// Makes texts from UTF-8, and hands out the same text again for bytes that it has met lately. A rule file
/// says the same few hundred things over and over, so most of what is read from it needs neither a conversion
/// nor memory of its own.
class TextPool
{
public:
    /// The text of bytes that end in a NUL.
    CString Text(const char* utf8);

private:
    static constexpr std::size_t LongestKept = 47; ///< in bytes
    static constexpr std::size_t Places = 512;

    struct Known
    {
        std::array<char, LongestKept> bytes; ///< without the NUL
        unsigned char size = 0;              ///< 0: nothing yet
        CString text;
    };

    static std::size_t PlaceOf(const char* bytes, std::size_t size) noexcept;

    /// Each text has one place, which it takes from the one before. Made with the first text: most documents
    /// are made for one element and never read.
    std::vector<Known> m_known;
};

} // namespace xml::detail
