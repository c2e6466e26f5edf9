#pragma once

namespace cli {

/// While it lives, an interrupt (Ctrl+C) does not end the program but is remembered. One at a time.
class Interrupt
{
public:
    Interrupt();
    ~Interrupt();
    Interrupt(const Interrupt&) = delete;
    Interrupt& operator=(const Interrupt&) = delete;

    /// Whether one came since this was made.
    bool HasCome() const noexcept;

private:
    void (*m_former)(int);
};

} // namespace cli
