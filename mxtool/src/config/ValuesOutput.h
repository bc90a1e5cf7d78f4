#pragma once

#include "config/Configuration.h"

#include <string>

namespace mxtool {

/// Returns the values of `configuration` as a values file (YAML) to start from: each with its range
/// or options and its default in a comment, a channel's parameters under the channel's name.
std::string configurationValues(const Configuration& configuration);

} // namespace mxtool
