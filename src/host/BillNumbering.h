#pragma once

#include "platform/Export.h"
#include "platform/Text.h"

#include <functional>
#include <optional>

namespace host {

/// The suffix behind the highest of `known`, whose last `suffixLength` characters are read as numbers, with
/// zeros in front. When all are used the count starts again at 0.
KTQDDE_EXPORT CString SuffixAfter(const CStringArray& known, int suffixLength);

/// How a coding rule of a bill library makes a number of a base and a suffix, and which suffix is proposed
/// for a picked number. The dialog for bill numbers proposes by it; a host that counts what has been proposed
/// since nothing was written can tell by it, too.
class KTQDDE_EXPORT BillNumbering
{
public:
    using Known = std::function<bool(const CString& number)>;

    /// Nothing for a missing or unknown rule. Known are 9 and 3, 12 and 3, 12 and 1, 10 and 2 digits; the
    /// import of libraries names these to people.
    static std::optional<BillNumbering> Of(int codeLength, int suffixLength);

    /// The base of a picked number, and the suffix that it brings, which is empty where numbers are picked
    /// without one.
    CString BaseOf(const CString& picked) const;
    CString SuffixOf(const CString& picked) const;
    int SuffixLength() const noexcept { return m_suffixLength; }

    /// Whether a picked suffix is kept where it is free: `FreeSuffix` then gives the proposal, else
    /// `SuffixAfter`.
    bool KeepsFreeSuffix() const noexcept { return m_keepsFreeSuffix; }

    /// The suffix that a picked one becomes. One that `known`, the numbers of the project, does not hold
    /// stays, and without any number there it is only brought to three digits. Only for one that it holds the
    /// library is asked, too: such a number is counted up past all that either knows, if need be to four
    /// digits. A library that knows every number ends the count there.
    static CString FreeSuffix(const CString& base, const CString& suffix, const CStringArray& known,
                              const Known& isInLibrary);

private:
    BillNumbering(int suffixLength, int pickedBaseLength, bool keepsFreeSuffix) noexcept;

    int m_suffixLength;
    int m_pickedBaseLength; ///< 0 when a picked number is a base as it stands
    bool m_keepsFreeSuffix;
};

} // namespace host
