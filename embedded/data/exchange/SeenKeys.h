#pragma once

#include "platform/Text.h"

#include <QtCore/QHash>

namespace embedded {

/// Raises `RowRefused` for the second row of a file with the same key.
class SeenKeys
{
public:
    void Take(const CString& key, int line);
    /// Raises `RowRefused` when an earlier row gave another value for the same key.
    void Agree(const CString& key, const CString& value, int line);

private:
    struct Seen
    {
        CString value;
        int line = 0;
    };
    QHash<CString, Seen> m_seen;
};

} // namespace embedded
