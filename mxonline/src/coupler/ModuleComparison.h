#pragma once

#include "coupler/ModuleRegisters.h"

#include <mxonline/CouplerDifference.h>

#include <vector>

namespace mxonline {

/// Compares as `compare` does, with the registers of the modules of `plan` already known.
CouplerDifference compareModules(const mxstation::Plan& plan,
                                 const std::vector<ModuleRegisters>& modules, const Target& target,
                                 const CouplerState& state);

} // namespace mxonline
