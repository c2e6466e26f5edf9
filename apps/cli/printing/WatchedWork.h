#pragma once

#include "cli/printing/Interrupt.h"
#include "embedded/data/engine/Progress.h"

namespace cli {

/// While it lives, a person can follow long work and cancel it: a terminal shows the part that is done, on
/// one line that is written over again and again, and an interrupt (Ctrl+C) cancels. One at a time.
class WatchedWork
{
public:
    WatchedWork() = default;
    ~WatchedWork();
    WatchedWork(const WatchedWork&) = delete;
    WatchedWork& operator=(const WatchedWork&) = delete;

    /// What the work is to call. This must outlive it.
    embedded::Progress Progress();

private:
    void Show(int percent);

    Interrupt m_interrupt;
    bool m_isSeen = false;
    int m_shown = -1;
};

} // namespace cli
