#pragma once

#include "mxonline/Target.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace mxonline {

/// What a coupler has at a position of the row.
struct ModuleState
{
    std::size_t position = 0; ///< In the row, from 1.
    /// Identifier of the module there; empty: the coupler has no registers that identify modules.
    std::optional<std::uint32_t> moduleId;
    /// As `mxmodule::Module::registers` has them; empty also if a module of the row is not that of
    /// the station: the parameters were not read.
    std::vector<std::uint16_t> registers;
};

/// The identity and the parameters of the modules as read from a coupler.
struct CouplerState
{
    std::vector<ModuleState> modules; ///< Of all positions of the row.
};

} // namespace mxonline
