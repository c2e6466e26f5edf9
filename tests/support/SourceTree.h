#pragma once

#include <QtCore/QString>

namespace test {

/// The native path of something in the source tree: shipped data and samples, which tests read as people do.
QString InSourceTree(const QString& path);

} // namespace test
