#pragma once

#include "plan/PlanFindings.h"

#include <mxstation/Plan.h>

namespace mxstation {

/// Adds an error for everything of `plan` that has no room in the registers which it states: images
/// and modules beyond the last register, parameters that take more than their stride, and registers
/// that are used twice. The modules have their final places and images.
void addModbusFindings(const Station& station, const Plan& plan, PlanFindings& findings);

} // namespace mxstation
