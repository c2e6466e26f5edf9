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

void Write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
        throw std::runtime_error("cannot write " + path.toStdString());
}

/// Gives a file the same time whenever it was written.
void Stamp(const QString& path)
{
    QFile file(path);
    const QDateTime time(QDate(2020, 1, 1), QTime(12, 0));
    if (!file.open(QIODevice::ReadWrite) || !file.setFileTime(time, QFileDevice::FileModificationTime))
        throw std::runtime_error("cannot give a time to " + path.toStdString());
}

} // namespace

Watching WatchingHere()
{
    const TempFolder folder;
    const QString alike = folder.Native(u"alike"_s);
    const QString later = folder.Native(u"later"_s);
    for (const QString& path : {alike, later}) {
        Write(path, "a");
        Stamp(path);
    }
    QSet<QString> heard;
    QFileSystemWatcher watcher;
    QObject::connect(&watcher, &QFileSystemWatcher::fileChanged, &watcher,
                     [&](const QString& path) { heard.insert(path); });
    if (!watcher.addPaths({alike, later}).isEmpty()) return Watching::Nothing;
    // What is written first is told first, if at all.
    Write(alike, "b");
    Stamp(alike);
    Write(later, "b");
    WaitInLoopFor(u"a file that was written"_s, [&] { return heard.contains(later); });
    return heard.contains(alike) ? Watching::EveryWrite : Watching::ByTime;
}

} // namespace test
