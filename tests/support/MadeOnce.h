#pragma once

#include <QtCore/QString>

#include <functional>

namespace test {

/// Puts a folder at a native path where nothing stands yet: a copy of what `make` puts into the folder that
/// it is given, of which nothing needs to stand yet either. A test program calls `make` once for each `key`
/// and keeps what it made to its end, so that tests which merely begin with it need not wait for it each
/// time. What depends on the folder's own path must not be in there. What `make` raises travels on, and the
/// next call tries again.
void PutMadeOnce(const QString& nativeFolder, const QString& key,
                 const std::function<void(const QString& nativeFolder)>& make);

} // namespace test
