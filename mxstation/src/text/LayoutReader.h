#pragma once

#include "text/YamlSection.h"

namespace mxstation {

/// Returns the layout that `node` names or describes; errors of it are added to `errors`, and its
/// other statements count.
Layout readLayout(const YamlNode& node, StationErrors& errors);

} // namespace mxstation
