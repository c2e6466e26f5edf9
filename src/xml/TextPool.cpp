#include "xml/TextPool.h"

#include "platform/Encoding.h"
#include "xml/Characters.h"

#include <cstdint>
#include <cstring>

using namespace Qt::StringLiterals;

namespace xml::detail {

CString TextPool::Text(const char* utf8)
{
    const std::size_t size = std::strlen(utf8);
    if (size == 0) return u""_s; // more than a quarter of the attributes of usual rules
    if (size > LongestKept) return platform::FromUtf8({utf8, static_cast<qsizetype>(size)});
    if (m_known.empty()) m_known.resize(Places);
    Known& known = m_known[PlaceOf(utf8, size)];
    if (known.size != size || !SameBytes(utf8, {known.bytes.data(), size})) {
        known.text = platform::FromUtf8({utf8, static_cast<qsizetype>(size)});
        known.size = static_cast<unsigned char>(size);
        std::memcpy(known.bytes.data(), utf8, size);
    }
    return known.text;
}

/// Goes by length and both ends, where texts of one kind differ.
std::size_t TextPool::PlaceOf(const char* bytes, std::size_t size) noexcept
{
    std::uint32_t head = 0;
    std::uint32_t tail = 0;
    if (size >= sizeof head) {
        std::memcpy(&head, bytes, sizeof head);
        std::memcpy(&tail, bytes + size - sizeof tail, sizeof tail);
    } else {
        head = static_cast<unsigned char>(bytes[0]);
        tail =
            static_cast<unsigned char>(bytes[size / 2]) * 256U + static_cast<unsigned char>(bytes[size - 1]);
    }
    const std::uint64_t mixed = (std::uint64_t{head} << 32U | tail) + size;
    return (mixed * 0x9E3779B97F4A7C15U) >> 55U;
}

} // namespace xml::detail
