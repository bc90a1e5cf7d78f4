#pragma once

#include "configuration/ConfigOptions.h"

#include <mxmodule/Module.h>

#include <vector>

namespace mxtool {

/// Returns the configuration that the values of the call describe, and reports its findings. Throws
/// a `Failure` with every rejected value.
mxmodule::Configuration composedConfiguration(const ConfigOptions& options,
                                              const mxmodule::Module& module);

/// Returns the raw image of --decode or --compare and reports, unless `quiet`, what is worth
/// knowing about it. Throws a `Failure` when it is none of `module`.
std::vector<char> imageOfCall(const ConfigOptions& options, const mxmodule::Module& module,
                              bool quiet);

} // namespace mxtool
