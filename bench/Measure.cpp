#include "bench/Measure.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace bench {

namespace {

double Time(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> values)
{
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2),
                     values.end());
    return values[values.size() / 2];
}

} // namespace

Timed Alternate(int rounds, const std::function<void()>& ours, const std::function<void()>& peer,
                const std::function<void()>& prepare)
{
    std::vector<double> oursMs;
    std::vector<double> peerMs;
    for (int round = 0; round <= rounds; ++round) {
        if (prepare) prepare();
        const double first = Time(ours);
        if (prepare) prepare();
        const double second = Time(peer);
        if (round == 0) continue; // warm-up
        oursMs.push_back(first);
        peerMs.push_back(second);
    }
    return {Median(oursMs), Median(peerMs)};
}

double MedianOf(int rounds, const std::function<void()>& work)
{
    work();
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round)
        times.push_back(Time(work));
    return Median(times);
}

bool Report(const Figure& figure, double ours, double peer, double ratio)
{
    const bool met = ratio <= figure.bar;
    std::printf("%-14s %10.2f %-22s %10.2f %6.2f  (bar %.2f%s)\n", figure.name, ours, figure.peer, peer,
                ratio, figure.bar, met ? "" : ", MISSED");
    std::fflush(stdout);
    return met;
}

void Keep(const void* result)
{
    static const void* volatile kept;
    kept = result;
    static_cast<void>(kept);
}

} // namespace bench
