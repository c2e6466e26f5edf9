#include "xml/NamePool.h"

#include "xml/Utf8Name.h"

namespace xml::detail {

namespace {

constexpr std::size_t Places = 128;

/// No two attributes that the tree writes share a place, nor one of the 64 bits.
std::size_t PlaceOf(const CString& name) noexcept
{
    if (name.isEmpty()) return 0;
    const auto size = static_cast<std::size_t>(name.size());
    return (size + name[name.size() / 2].unicode() + 8U * name.back().unicode()) % Places;
}

KnownName Examine(const CString& name)
{
    const Utf8Name bytes(name);
    KnownName known{name, bytes.Text(), bytes.IsXmlName(), 0};
    if (known.isXmlName) known.bit = std::uint64_t{1} << (PlaceOf(name) % 64);
    return known;
}

/// Most callers ask with the same text each time, not only with an equal one.
bool IsSame(const CString& left, const CString& right) noexcept
{
    return left.size() == right.size() && (left.constData() == right.constData() || left == right);
}

} // namespace

const KnownName& NamePool::Find(const CString& name)
{
    if (m_known.empty()) m_known.resize(Places);
    KnownName& known = m_known[PlaceOf(name)];
    if (!IsSame(known.text, name)) known = Examine(name);
    return known;
}

} // namespace xml::detail
