#pragma once

#include "platform/Text.h"

/// Places of the sample project in a test's folder.
namespace test {

inline const CString CurrentFile = QStringLiteral("project\\app\\自动套配置\\DefaultConfig.xml");
inline const CString OtherFile = QStringLiteral("project\\app\\自动套配置\\给排水示例.xml");
inline const CString Pipes = QStringLiteral("给排水\\管道\\给水管");

} // namespace test
