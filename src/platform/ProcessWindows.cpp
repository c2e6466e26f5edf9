#include "platform/Process.h"

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX // some standard libraries define it
#define NOMINMAX
#endif
#include <windows.h>

// after windows.h, on whose types it relies
#include <psapi.h>

qint64 platform::PeakMemory()
{
    PROCESS_MEMORY_COUNTERS counters{};
    if (!K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters)) return 0;
    return static_cast<qint64>(counters.PeakWorkingSetSize);
}
