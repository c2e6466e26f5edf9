#pragma once

#include <QtCore/QtGlobal>

/// A host gives the attributes of a small category as one flat list (`IAttributes::GetAttributeList`): so
/// many texts for each of them, with these places among them. The first names a group and is not used.
namespace host {

inline constexpr qsizetype AttributeGroupSize = 4;
inline constexpr qsizetype AttributeNamePlace = 1; ///< the display name
inline constexpr qsizetype AttributeExtraPlace =
    2; ///< what is handed back to the host when it is asked for the values
inline constexpr qsizetype AttributeCodePlace = 3;

} // namespace host
