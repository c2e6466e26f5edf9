#pragma once

#include "embedded/data/engine/Progress.h"

#include <QtCore/QtGlobal>

namespace embedded {

/// Tells whoever waits for an import how far it is, and carries the cancel back.
class ImportMeter
{
public:
    /// `progress` must outlive this; it may be empty.
    explicit ImportMeter(const Progress& progress) : m_progress(progress) {}

    /// The steps to come, `count` in number, are the part of the work between two percentages.
    void Begin(int from, int to, qsizetype count);
    /// Raises `Cancelled` when that is asked for.
    void Step();

private:
    void Tell(int percent) const;

    const Progress& m_progress;
    int m_from = 0;
    int m_to = 0;
    qsizetype m_count = 0;
    qsizetype m_done = 0;
};

} // namespace embedded
