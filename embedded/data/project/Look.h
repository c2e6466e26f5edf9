#pragma once

#include "platform/Text.h"

#include <QtCore/QByteArray>

namespace embedded {

/// While one lives, files are read on this thread to be looked at, and nothing is worked on or written from
/// what is read. So such a read keeps no other program away and does not count as having seen what another
/// program wrote.
class Look
{
public:
    Look() noexcept;
    ~Look();
    Look(const Look&) = delete;
    Look& operator=(const Look&) = delete;

    static bool IsUnderWay() noexcept;
};

/// The content of a file, read so. Raises `platform::FileError`.
QByteArray ReadToLook(const CString& path);

} // namespace embedded
