#include "host/BillNumbering.h"

#include "platform/Numbers.h"

#include <algorithm>
#include <cmath>

namespace host {

namespace {

CString Padded(int number, int length)
{
    return CString::number(number).rightJustified(length, u'0');
}

} // namespace

CString SuffixAfter(const CStringArray& known, int suffixLength)
{
    int highest = 0;
    for (const CString& number : known)
        highest = std::max(highest, platform::_wtoi(number.right(suffixLength)));
    const float largest = std::pow(10.0F, static_cast<float>(suffixLength)) - 1.0F;
    if (largest < static_cast<float>(highest + 1)) highest = -1;
    return Padded(highest + 1, suffixLength);
}

BillNumbering::BillNumbering(int suffixLength, int pickedBaseLength, bool keepsFreeSuffix) noexcept
    : m_suffixLength(suffixLength), m_pickedBaseLength(pickedBaseLength), m_keepsFreeSuffix(keepsFreeSuffix)
{
}

std::optional<BillNumbering> BillNumbering::Of(int codeLength, int suffixLength)
{
    const auto is = [=](int length, int suffix) { return codeLength == length && suffixLength == suffix; };
    if (is(9, 3) || is(10, 2)) return BillNumbering(suffixLength, 0, false);
    if (is(12, 3)) return BillNumbering(suffixLength, 9, true);
    if (is(12, 1)) return BillNumbering(suffixLength, 11, false);
    return std::nullopt;
}

CString BillNumbering::BaseOf(const CString& picked) const
{
    return m_pickedBaseLength == 0 ? picked : picked.left(m_pickedBaseLength);
}

CString BillNumbering::SuffixOf(const CString& picked) const
{
    return m_pickedBaseLength == 0 ? CString() : picked.right(m_suffixLength);
}

CString BillNumbering::FreeSuffix(const CString& base, const CString& suffix, const CStringArray& known,
                                  const Known& isInLibrary)
{
    constexpr int digits = 3;
    constexpr int last = 9999;
    int n = suffix.isEmpty() ? 1 : platform::_wtoi(suffix);
    if (known.isEmpty()) return Padded(n, digits);
    CString candidate = suffix;
    if (!known.contains(base + candidate)) return candidate;
    while (n < last && (isInLibrary(base + candidate) || known.contains(base + candidate)))
        candidate = Padded(++n, digits);
    return candidate;
}

} // namespace host
