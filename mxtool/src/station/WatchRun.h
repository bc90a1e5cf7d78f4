#pragma once

#include "ExitCode.h"
#include "station/CouplerChoice.h"
#include "station/SampleOutput.h"

#include <mxonline/Watch.h>

#include <chrono>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace mxtool {

/// What is watched, and how it is shown.
struct WatchOptions
{
    CouplerChoice coupler;
    std::vector<std::string> names; ///< Channels and modules; empty: all.
    std::string interval = "1s";
    bool isOnce = false;
    std::uint64_t samples = 0; ///< 0: until a signal.
    std::string format = "text";
    bool changesOnly = false; ///< After the first sample.
    bool keepsGoing = false;  ///< After a fault, with csv and json too.

    /// Returns the number of samples.
    std::uint64_t count() const
    {
        return isOnce ? 1 : samples == 0 ? std::numeric_limits<std::uint64_t>::max() : samples;
    }
};

/// Watches a coupler until the samples are taken, or a signal comes.
class WatchRun
{
public:
    /// `chosen` outlives the object. Throws a `Failure`; sends nothing.
    WatchRun(const WatchOptions& chosen, std::chrono::milliseconds between);

    /// Shows sample after sample at fixed times from the first. Throws a `Failure` after a fault
    /// that ends it.
    ExitCode run();

private:
    std::string title() const;
    void takeSample();
    std::optional<mxonline::Sample> sampleUnlessFault();
    void tellSkipped(std::uint64_t skipped) const;

    const WatchOptions& options;
    std::chrono::milliseconds interval;
    StationCoupler station;
    mxonline::Watch watch;
    std::unique_ptr<SampleOutput> output;
    bool isLastMissing = false;
};

} // namespace mxtool
