#pragma once

#include "mxonline/MxonlineApi.h"

#include <chrono>
#include <string>

namespace mxonline {

/// Returns the time that `text` states: a whole number and a unit, "10ms", "1s", "5m" or "2h". At
/// most 24 hours. Throws a `mxmodule::Failure` of origin `Request`, without a place, for any other
/// text.
MXONLINE_API std::chrono::milliseconds timeOf(const std::string& text);

/// Returns `time` as `timeOf` reads it, in the largest unit without a rest: "90s", "1500ms".
MXONLINE_API std::string timeText(std::chrono::milliseconds time);

} // namespace mxonline
