#pragma once

#include "host/BillNumbering.h"
#include "host/Records.h"

#include <QtCore/QHash>

#include <optional>

namespace embedded {

/// The bill numbers that a dialog has proposed and a person may have taken, but that no rule file holds yet:
/// a dialog writes its rules only when it closes. Without them a second new bill of the same base would be
/// proposed the number of the first.
///
/// A dialog does not say which number was taken. It asks for the items of a base number when it begins to
/// propose, and looks up the picked number in the library only after the person has accepted. So what it may
/// have proposed counts from then on; a proposal that is cancelled is free again. Who has chosen an existing
/// number or typed another one leaves a gap.
class ProposedNumbers
{
public:
    /// What a dialog may propose for an item of `base` that it was told these items of: the items of the
    /// library, each with a number that it may be given. What it proposes after it has refused a suffix of a
    /// wrong length is among them.
    static CArray<SQdInfo> Possible(const host::BillNumbering& numbering, const CString& base,
                                    const CArray<SQdInfo>& told, const CArray<SQdInfo>& ofLibrary);

    /// A dialog was told which items of `base` there are.
    void Ask(const CString& library, const CString& base, const CArray<SQdInfo>& told);
    /// The item of a number was looked up. Counts what was proposed for it if its base is the one that was
    /// asked for last, once. Gives the picked item with that number, or nothing.
    std::optional<SQdInfo> LookUp(const CString& library, const host::BillNumbering& numbering,
                                  const SQdInfo& picked, const host::BillNumbering::Known& isInLibrary);

    /// The numbers of that base so far, each with name and unit of the picked item.
    CArray<SQdInfo> Find(const CString& library, const CString& base) const;

    /// To be called when every rule that a dialog made has been written or dropped.
    void Forget();

private:
    CString m_library;
    CString m_base; ///< empty when nothing was asked for since the last look-up
    CStringArray m_told;
    QHash<CString, CArray<SQdInfo>> m_items; ///< by library and base
};

} // namespace embedded
