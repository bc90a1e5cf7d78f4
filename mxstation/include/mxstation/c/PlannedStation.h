#pragma once

#include "mxstation/MxstationApi.h"
#include "mxstation/Plan.h"
#include "mxstation/Station.h"
#include "mxstation/c/plan.h"

#include <memory>

// For libraries with a C interface of their own over this one.

namespace mxstation {

/// A station and its plan: what a plan of the C interface has.
struct PlannedStation
{
    Station station; ///< The station.
    Plan plan;       ///< Its plan, perhaps with errors.
};

/// Returns what `plan` has, which may then be freed. A null pointer becomes the error
/// `MXMODULE_MISUSE`.
MXSTATION_API std::shared_ptr<const PlannedStation> plannedStationOf(const mxstation_plan* plan);

} // namespace mxstation
