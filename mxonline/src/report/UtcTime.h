#pragma once

#include <string>

namespace mxonline {

/// Returns the present time in UTC with milliseconds: "2026-01-31T08:15:00.123Z".
std::string utcTime();

} // namespace mxonline
