#pragma once

#include "platform/Text.h"

/// Headings that columns of more than one table have in the files.
namespace embedded {

inline const CString Category = QStringLiteral("category");
inline const CString Code = QStringLiteral("code");
inline const CString Kind = QStringLiteral("kind");
inline const CString Unit = QStringLiteral("unit");

} // namespace embedded
