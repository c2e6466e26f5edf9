#pragma once

#include "embedded/data/engine/Progress.h"
#include "rules/bill/PriceTakeoff.h"

#include <functional>
#include <utility>

namespace shared {

/// A watch that tells `progress` how far the work is, from 0 to 100, and what became of each component to
/// `take`. It raises `embedded::Cancelled` when the work is to stop. Both must outlive it.
inline rules::TakeoffWatch WatchFor(const embedded::Progress& progress,
                                    std::function<void(const rules::PricedRow&)> take = {},
                                    std::function<void()> begin = {})
{
    return {.begin = std::move(begin), .take = std::move(take), .progress = [&progress](double part) {
                embedded::Tell(progress, static_cast<int>(100 * part));
            }};
}

} // namespace shared
