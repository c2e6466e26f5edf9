#pragma once

#include "platform/Text.h"

namespace test {

inline const CString Section = QStringLiteral("QdDeConfigInfo");
inline const CString Key = QStringLiteral("ConfigName");

} // namespace test
