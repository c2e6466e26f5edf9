#pragma once

#include <QtCore/QString>

#include <functional>

/// Measuring by ratio: ours and the peer run in turn, so that a machine that slows down slows both.
namespace bench {

/// One figure and the ratio that it must not exceed.
struct Figure
{
    const char* name;
    const char* peer;
    double bar;
};

/// Runs both once unmeasured, then `rounds` times in turn, and takes the median of each. What a round needs
/// before the clock starts is done by `prepare`.
struct Timed
{
    double oursMs = 0;
    double peerMs = 0;
    double Ratio() const { return oursMs / peerMs; }
};
Timed Alternate(int rounds, const std::function<void()>& ours, const std::function<void()>& peer,
                const std::function<void()>& prepare = {});

/// The median time of `work` in milliseconds, after one unmeasured run.
double MedianOf(int rounds, const std::function<void()>& work);

/// Prints "name ours_ms peer peer_ms ratio (bar)". True when the bar is met.
bool Report(const Figure& figure, double ours, double peer, double ratio);

/// A result that the compiler must not drop.
void Keep(const void* result);

} // namespace bench
