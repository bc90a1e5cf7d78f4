#pragma once

#include "bus/RegisterReading.h"
#include "coupler/ModuleRegisters.h"

#include <mxonline/CouplerState.h>

#include <optional>
#include <vector>

namespace mxonline {

/// Reads the identity and the parameters of all modules of a station.
class ParameterReading
{
public:
    /// `rowModules` outlives the object.
    ParameterReading(const std::vector<ModuleRegisters>& rowModules,
                     const mxstation::ModbusMap& described);

    /// Returns what the coupler of `client` has; without parameters if one of its modules is not
    /// that of the station: registers of another module have another meaning, or do not exist.
    /// Throws a `mxmodule::Failure`.
    CouplerState read(ModbusClient& client);

    /// Returns the identity alone, if the coupler has it. Throws a `mxmodule::Failure`.
    CouplerState readIdentity(ModbusClient& client);

private:
    void readIdentities(ModbusClient& client, CouplerState& state);
    bool hasExpectedModules(const CouplerState& state) const;
    void readParameters(ModbusClient& client, CouplerState& state);

    const std::vector<ModuleRegisters>& modules;
    mxstation::ModbusMap map;
    RegisterReading parameters;
    std::optional<RegisterReading> identities;
};

} // namespace mxonline
