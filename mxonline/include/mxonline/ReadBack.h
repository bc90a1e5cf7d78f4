#pragma once

#include "mxonline/CouplerState.h"
#include "mxonline/Target.h"

#include <mxstation/Plan.h>
#include <mxstation/Station.h>

#include <string>

namespace mxonline {

/// Returns the text of `station` in which the modules state the parameters in `state`, what the
/// coupler at `target` has: see `mxstation::withParameters`. `plan` is that of the station.
///
/// Throws a `mxmodule::Failure`: of origin `Output` when a module is not that of the station, and
/// with module, parameter and registers of every value that a station cannot state; of origin
/// `Input` when the text cannot be changed.
MXONLINE_API std::string withParametersOf(const mxstation::Station& station,
                                          const mxstation::Plan& plan, const Target& target,
                                          const CouplerState& state);

} // namespace mxonline
