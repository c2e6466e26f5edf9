#pragma once

#include <exception>
#include <functional>

namespace embedded {

/// Called now and then with the part of the work that is done, from 0 to 100, on the caller's thread. False
/// cancels the work.
using Progress = std::function<bool(int percent)>;

/// Raised on the way out of work that was cancelled.
class Cancelled : public std::exception
{
public:
    const char* what() const noexcept override { return "cancelled"; }
};

/// Tells how far the work is. Raises `Cancelled` when it is to stop.
inline void Tell(const Progress& progress, int percent)
{
    if (progress && !progress(percent)) throw Cancelled();
}

} // namespace embedded
