#pragma once

#include "platform/Text.h"

#include <QtCore/QHash>

#include <unordered_map>

namespace rules {

/// For containers of texts in which a view is looked up without a text being made of it.
struct TextHash
{
    using is_transparent = void;
    std::size_t operator()(QStringView text) const noexcept { return qHash(text); }
};
struct TextEqual
{
    using is_transparent = void;
    bool operator()(QStringView a, QStringView b) const noexcept { return a == b; }
};
template <typename Value>
using TextMap = std::unordered_map<CString, Value, TextHash, TextEqual>;

} // namespace rules
