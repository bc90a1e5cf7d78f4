#pragma once

#include "coupler/ModuleRegisters.h"
#include "coupler/ParameterWrites.h"

#include <mxonline/ApplyReport.h>

#include <vector>

// How the report of a write is filled, step by step.

namespace mxonline {

/// Adds the station, the modules and the parameters that differed before.
void beginReport(ApplyReport& report, const mxstation::Plan& plan, const CouplerDifference& before);

/// Adds what was read back: `after` and the registers in `state`.
void addReadBack(ApplyReport& report, const std::vector<ModuleRegisters>& modules,
                 const CouplerDifference& after, const CouplerState& state);

/// Marks the parameters that the coupler confirmed as written.
void addWritten(ApplyReport& report, const std::vector<ModuleRegisters>& modules,
                const std::vector<ParameterPlace>& written);

/// Adds an error for each parameter that was read back and is not as planned.
void addValueErrors(ApplyReport& report);

} // namespace mxonline
