#pragma once

#include "mxonline/Target.h"

#include <mxstation/Plan.h>

namespace mxonline {

/// Returns `plan` itself if a coupler at `target` can be reached by it. Throws a
/// `mxmodule::Failure` when it has errors or no `modbus:` map, or when the unit is none of a serial
/// line.
const mxstation::Plan& requireUsable(const mxstation::Plan& plan, const Target& target);

} // namespace mxonline
