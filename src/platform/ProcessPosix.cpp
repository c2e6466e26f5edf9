#include "platform/Process.h"

#include <QtCore/QFile>

#include <sys/resource.h>

namespace {

/// Linux counts in `getrusage` what the parent held before the program was started; its own file does not.
[[maybe_unused]] qint64 PeakFromProc()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:")) return line.mid(6).trimmed().split(' ').first().toLongLong() * 1024;
    return 0;
}

} // namespace

qint64 platform::PeakMemory()
{
#if defined(__linux__)
    return PeakFromProc();
#else
    rusage usage{};
    if (getrusage(RUSAGE_SELF, &usage) != 0) return 0;
#if defined(__APPLE__)
    return usage.ru_maxrss;
#else
    return static_cast<qint64>(usage.ru_maxrss) * 1024;
#endif
#endif
}
