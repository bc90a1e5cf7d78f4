#pragma once

#include "mxonline/CouplerState.h"

#include <mxmodule/Finding.h>
#include <mxstation/Plan.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace mxonline {

/// What is known of the module at a position of the row.
enum class Identification
{
    NotPossible, ///< The coupler has no registers that identify modules.
    Same,        ///< The module of the station.
    Other        ///< Another module, or none.
};

/// A parameter whose registers differ from those of the station.
struct ParameterDifference
{
    std::string parameter;              ///< By which a station states it.
    std::uint16_t address = 0;          ///< Its first register.
    std::vector<std::uint16_t> found;   ///< Its registers on the coupler, in the coupler's order.
    std::vector<std::uint16_t> planned; ///< What the station states, in the same order.
    std::string foundShown;   ///< The value on the coupler for people: "50 Hz", "no value: ...".
    std::string plannedShown; ///< The value of the station for people.
};

/// A module of the station and how the coupler's differs from it.
struct ModuleDifference
{
    std::size_t position = 0; ///< In the row, from 1.
    std::string name;         ///< Of the module.
    std::string moduleId;     ///< Of the station, eight hexadecimal digits.
    Identification identification = Identification::NotPossible; ///< Whether it is this module.
    std::string foundId; ///< The coupler's identifier, eight hexadecimal digits; may be empty.
    std::vector<ParameterDifference> parameters; ///< In the order of the registers.
};

/// How the parameters on a coupler differ from those of a station.
struct CouplerDifference
{
    std::string station;                   ///< Name of the station.
    std::string target;                    ///< Of the coupler: "tcp:127.0.0.1:502".
    mxstation::ModbusMap map;              ///< Its registers.
    std::vector<ModuleDifference> modules; ///< All of the row.

    /// Returns whether every register of a parameter is as the station states.
    MXONLINE_API bool isSame() const;

    /// Returns how many parameters differ.
    MXONLINE_API std::size_t parameterCount() const;

    /// Returns an error for each module that is not that of the station.
    MXONLINE_API std::vector<mxmodule::Finding> identityErrors() const;
};

/// Compares what was read from the coupler at `target` with `plan`, whose map is stated.
///
/// A value that the module's description does not accept is shown as such; its registers are
/// compared all the same.
MXONLINE_API CouplerDifference compare(const mxstation::Plan& plan, const Target& target,
                                       const CouplerState& state);

} // namespace mxonline
