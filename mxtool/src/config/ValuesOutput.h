#pragma once

#include "config/Configuration.h"

#include <string>

namespace mxtool {

/// Returns the values of `configuration` as a values file (YAML) to be edited: a comment states the
/// range or options and the default of each value; a channel's parameters are grouped under the
/// channel's name.
std::string configurationValues(const Configuration& configuration);

} // namespace mxtool
