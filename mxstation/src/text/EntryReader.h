#pragma once

#include "text/ModuleSource.h"
#include "text/YamlSection.h"

namespace mxstation {

/// Returns the entry of the row that `node` describes; errors of it are added to `errors`.
Entry readEntry(const YamlNode& node, ModuleSource& modules, StationErrors& errors);

} // namespace mxstation
