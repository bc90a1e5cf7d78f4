#pragma once

#include "coupler/CouplerContent.h"

namespace mxonline {

/// Reads the identity of the modules, if the coupler of `connected` has it: the bytes of the images
/// belong to the channels of the station only with the modules of the station. Throws a
/// `mxmodule::Failure` with an error for each other module.
void requireRow(Coupler::Content& connected);

} // namespace mxonline
