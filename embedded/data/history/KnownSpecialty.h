#pragma once

#include "platform/Text.h"

#include <QtCore/QByteArray>

#include <optional>
#include <utility>

namespace embedded {

/// What a program knows of its specialty in a rule file: what the file held when the program last read it to
/// work on it, or wrote it. The module's save replaces the specialty whole, so whoever saves from an older
/// state writes over what another program has saved there; the other specialties survive a save by
/// themselves.
class KnownSpecialty
{
public:
    /// The file holds this now; nothing when there is no file.
    void Know(std::optional<QByteArray> file) { m_file = std::move(file); }

    /// Whether `now`, what the file holds, has rules of the specialty that are not those that are known. The
    /// other parts of the file do not matter, nor does its layout.
    bool IsOtherIn(const std::optional<QByteArray>& now, const CString& specialty) const;

    /// Whether two contents of a file hold the same rules of a specialty.
    static bool IsSame(const QByteArray& left, const QByteArray& right, const CString& specialty);

private:
    std::optional<QByteArray> m_file;
};

} // namespace embedded
