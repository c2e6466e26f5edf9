#pragma once

#include "platform/Text.h"

#include <QtCore/QByteArray>

#include <cstdint>
#include <vector>

namespace xml::detail {

/// What is to be known of the name of an attribute.
struct KnownName
{
    CString text;
    QByteArray utf8;
    bool isXmlName = false;
    std::uint64_t bit = 0; ///< one of 64 that equal names share; 0 for what is no XML name
};

/// Knows the names that have been asked for lately. A tree is read and written by a few dozen names, each of
/// them thousands of times.
class NamePool
{
public:
    /// What is known of a name. Good until the next one is asked for.
    const KnownName& Find(const CString& name);

private:
    std::vector<KnownName> m_known; ///< each name has one place, which it takes from the one before
};

} // namespace xml::detail
