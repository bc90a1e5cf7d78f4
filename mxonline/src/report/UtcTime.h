#pragma once

#include <chrono>
#include <string>

namespace mxonline {

/// Returns `time` in UTC with milliseconds: "2026-01-31T08:15:00.123Z".
std::string utcTime(std::chrono::system_clock::time_point time);

/// Returns the present time in UTC with milliseconds.
std::string utcTime();

} // namespace mxonline
