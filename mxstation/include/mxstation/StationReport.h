#pragma once

#include "mxstation/Plan.h"

#include <string>

namespace mxstation {

// Both throw a `mxmodule::Failure` when the plan has errors.

/// Returns the row of `plan` as a table for people: for each module its bytes in both
/// images with their addresses, its parameter bytes and Modbus registers, and the reserved places;
/// after it the other bits that belong to no channel, the totals and the layout.
MXSTATION_API std::string stationText(const Plan& plan);

/// Returns the same as JSON, schema "mxtool.station" version 1.
MXSTATION_API std::string stationJson(const Plan& plan);

} // namespace mxstation
