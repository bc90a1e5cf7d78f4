#pragma once

#include "text/ModuleSource.h"

#include <string>

namespace mxstation {

/// Returns the station in `source`, the text called `name`, with its mx files from `modules`.
/// Throws a `mxmodule::Failure` when the text is of another kind.
Station stationIn(const std::string& source, const std::string& name, ModuleSource& modules);

} // namespace mxstation
