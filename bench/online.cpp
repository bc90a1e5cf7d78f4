// Reading a station of 64 modules from a simulated coupler on loopback, in this process: a sample
// of all channels, the comparison of all parameters, and whether a watch holds an interval of 10
// ms. WATCH_SECONDS states for how long, by default a fifth of a second.
#include <mxonline/Coupler.h>
#include <mxonline/Simulator.h>
#include <mxonline/Watch.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr auto interval = std::chrono::milliseconds(10);

// The row of the example, its coupler, and a connection to it.
struct WatchedRow
{
    mxstation::Plan plan = mxstation::plan(mxstation::readStation(ROW_OF_EXAMPLES));
    mxonline::Simulator simulator{plan, mxonline::listenTargetOf("tcp:127.0.0.1:0")};
    mxonline::Coupler coupler{plan, simulator.address()};
    mxonline::Watch watch{coupler};
};

double quantile(std::vector<double>& values, double part)
{
    const auto at =
        values.begin() + static_cast<std::ptrdiff_t>(part * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

std::chrono::duration<double> watchTime()
{
    const char* const stated = std::getenv("WATCH_SECONDS");
    return std::chrono::duration<double>(stated == nullptr ? 0.2 : std::atof(stated));
}

void sampleOf64Modules(benchmark::State& state)
{
    WatchedRow row;
    row.watch.sample();
    for (auto _ : state) {
        benchmark::DoNotOptimize(row.watch.sample());
    }
    state.counters["channels"] = static_cast<double>(row.watch.channels().size());
    state.counters["requests"] = static_cast<double>(row.watch.requestCount());
}

void differenceOf64Modules(benchmark::State& state)
{
    WatchedRow row;
    for (auto _ : state) {
        benchmark::DoNotOptimize(row.coupler.difference());
    }
}

void watchEvery10Milliseconds(benchmark::State& state)
{
    WatchedRow row;
    std::vector<double> distances;
    std::vector<double> durations;
    for (auto _ : state) {
        row.watch.sample();
        const auto begin = Clock::now();
        Clock::time_point last = begin;
        for (int tick = 1; Clock::now() - begin < watchTime(); ++tick) {
            std::this_thread::sleep_until(begin + tick * interval);
            const auto now = Clock::now();
            row.watch.sample();
            durations.push_back(Milliseconds(Clock::now() - now).count());
            if (tick > 1) { // before the first there is no sample at a tick
                distances.push_back(Milliseconds(now - last).count());
            }
            last = now;
        }
    }
    state.counters["distance_median_ms"] = quantile(distances, 0.5);
    state.counters["distance_p99_ms"] = quantile(distances, 0.99);
    state.counters["sample_median_ms"] = quantile(durations, 0.5);
    state.counters["sample_p99_ms"] = quantile(durations, 0.99);
    state.counters["samples"] = static_cast<double>(durations.size());
}

} // namespace

BENCHMARK(sampleOf64Modules)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(differenceOf64Modules)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(watchEvery10Milliseconds)->UseRealTime()->Iterations(1)->Unit(benchmark::kMillisecond);
