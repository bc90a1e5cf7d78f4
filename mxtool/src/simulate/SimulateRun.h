#pragma once

#include "ExitCode.h"
#include "station/StationChoice.h"

#include <optional>
#include <string>
#include <vector>

namespace mxtool {

/// What is simulated, and how.
struct SimulateOptions
{
    StationChoice station;
    std::string listen = "tcp:127.0.0.1:1502";
    std::string script; ///< Empty: standard input.
    bool isStrict = false;
    std::vector<std::string> faults;
    std::optional<unsigned> seconds;
};

/// Simulates the coupler of a station until the time is over, or a signal comes. Without `quiet`
/// what clients do is shown. Throws a `Failure`.
ExitCode simulate(const SimulateOptions& options, bool quiet);

} // namespace mxtool
