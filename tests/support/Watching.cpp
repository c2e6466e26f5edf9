#include "support/Watching.h"

#include "support/Patience.h"
#include "support/TempFolder.h"

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QFileSystemWatcher>
#include <QtCore/QSet>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace test {

namespace {

/// Writes a file that has the same time whenever it was written.
void Write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    const bool isWritten =
        file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush() &&
        file.setFileTime(QDateTime(QDate(2020, 1, 1), QTime(12, 0)), QFileDevice::FileModificationTime);
    if (!isWritten) throw std::runtime_error("cannot write " + path.toStdString());
}

} // namespace

Watching WatchingHere()
{
    const TempFolder folder;
    const QString alike = folder.Native(u"alike"_s);
    const QString longer = folder.Native(u"longer"_s);
    Write(alike, "a");
    Write(longer, "a");
    QSet<QString> heard;
    QFileSystemWatcher watcher;
    QObject::connect(&watcher, &QFileSystemWatcher::fileChanged, &watcher,
                     [&](const QString& path) { heard.insert(path); });
    if (!watcher.addPaths({alike, longer}).isEmpty()) return Watching::Nothing;
    // What is written first is told first, if at all.
    Write(alike, "b");
    Write(longer, "and longer");
    WaitInLoopFor(u"a file that was written"_s, [&] { return heard.contains(longer); });
    return heard.contains(alike) ? Watching::EveryWrite : Watching::ByTime;
}

} // namespace test
