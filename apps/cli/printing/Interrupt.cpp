#include "cli/printing/Interrupt.h"

#include <csignal>

namespace cli {

namespace {

volatile std::sig_atomic_t hasCome = 0;

extern "C" void OnInterrupt(int /*signal*/)
{
    hasCome = 1;
}

} // namespace

Interrupt::Interrupt()
{
    hasCome = 0;
    m_former = std::signal(SIGINT, OnInterrupt);
}

Interrupt::~Interrupt()
{
    if (m_former != SIG_ERR) std::signal(SIGINT, m_former);
}

bool Interrupt::HasCome() const noexcept
{
    return hasCome != 0;
}

} // namespace cli
