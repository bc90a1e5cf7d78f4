#pragma once

#include "bus/ModbusClient.h"
#include "coupler/ModuleRegisters.h"
#include "coupler/ParameterReading.h"

#include <mxonline/Coupler.h>

#include <vector>

namespace mxonline {

/// What an open coupler consists of.
class Coupler::Content
{
public:
    /// Throws as the constructor of `Coupler`.
    Content(const mxstation::Plan& planned, const Target& address, mxmodule::Observer* toldOf);
    Content(const Content&) = delete;
    Content& operator=(const Content&) = delete;

    mxmodule::Observer* observer; // may be null
    mxstation::Plan plan;
    Target target;
    std::vector<ModuleRegisters> modules; // of `plan`
    ModbusClient client;
    ParameterReading parameters; // of `modules`
};

} // namespace mxonline
