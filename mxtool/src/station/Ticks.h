#pragma once

#include <chrono>
#include <cstdint>

namespace mxtool {

/// The times at which something is done in an interval, counted from its beginning, so that the
/// time that it takes adds nothing to the interval.
class Ticks
{
public:
    using Time = std::chrono::steady_clock::time_point;

    Ticks(Time begin, std::chrono::milliseconds between) : start(begin), interval(between) {}

    /// Returns the first time after `now`, and after every one returned before.
    Time next(Time now)
    {
        const auto passed = static_cast<std::uint64_t>((now - start) / interval);
        const std::uint64_t following = passed + 1;
        skippedTicks += following - (tick + 1);
        tick = following;
        return start + interval * static_cast<std::int64_t>(tick);
    }

    /// Returns how many times were over before the next one was asked for.
    std::uint64_t skipped() const { return skippedTicks; }

private:
    Time start;
    std::chrono::milliseconds interval;
    std::uint64_t tick = 0; // the last one returned
    std::uint64_t skippedTicks = 0;
};

} // namespace mxtool
