#include "embedded/data/exchange/ImportMeter.h"

#include <algorithm>

namespace embedded {

namespace {

constexpr qsizetype StepsBetween = 500;

} // namespace

void ImportMeter::Begin(int from, int to, qsizetype count)
{
    m_from = from;
    m_to = to;
    m_count = std::max(count, qsizetype{1});
    m_done = 0;
    Tell(from);
}

void ImportMeter::Step()
{
    ++m_done;
    if (m_done % StepsBetween == 0) Tell(m_from + static_cast<int>((m_to - m_from) * m_done / m_count));
}

void ImportMeter::Tell(int percent) const
{
    embedded::Tell(m_progress, percent);
}

} // namespace embedded
