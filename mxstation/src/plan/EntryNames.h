#pragma once

#include "mxstation/Plan.h"
#include "plan/PlanFindings.h"

#include <string>
#include <vector>

namespace mxstation {

/// Returns `entryNames(station)`. A name that is used twice is an error.
std::vector<std::string> entryNames(const Station& station, PlanFindings& findings);

} // namespace mxstation
