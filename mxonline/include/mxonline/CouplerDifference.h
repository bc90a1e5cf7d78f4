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

/// Returns "not possible", "same" or "other".
MXONLINE_API const char* identificationName(Identification identification);

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
    bool isRead = false; ///< Its parameters were read: not if a module of the row is another one.
    std::vector<ParameterDifference> parameters; ///< In the order of the registers.
    /// Names of parameters that the station sets and that are in no register.
    std::vector<std::string> withoutRegisters;
};

/// What brings the parameters of a station to its coupler.
struct NeededWrites
{
    std::size_t parameters = 0; ///< Written, also if they are as planned: see `ModbusCommit`.
    std::size_t registers = 0;  ///< Of these parameters, and the commit register.
    std::size_t requests = 0;   ///< That write them, the commit included.
};

/// What the text of a difference is for.
enum class DifferenceUse
{
    Plan,  ///< What `Coupler::apply` would do; nothing was written.
    Apply, ///< What `Coupler::apply` does when a person agrees.
    Verify ///< Only whether the coupler is as planned.
};

/// How the parameters on a coupler differ from those of a station.
struct CouplerDifference
{
    std::string station;                   ///< Name of the station.
    std::string target;                    ///< Of the coupler: "tcp:127.0.0.1:502".
    mxstation::ModbusMap map;              ///< Its registers.
    std::vector<ModuleDifference> modules; ///< All of the row.
    NeededWrites writes;                   ///< Nothing if a module is another one.

    /// Returns whether every register of a parameter was read and is as the station states.
    MXONLINE_API bool isSame() const;

    /// Returns how many parameters differ.
    MXONLINE_API std::size_t parameterCount() const;

    /// Returns an error for each module that is not that of the station.
    MXONLINE_API std::vector<mxmodule::Finding> identityErrors() const;

    /// Returns tables for people: the modules, and the parameters that differ.
    MXONLINE_API std::string text(DifferenceUse use = DifferenceUse::Plan) const;

    /// Returns the question to a person whether `Coupler::apply` may write, without an answer to
    /// choose from: "Write ...?"
    MXONLINE_API std::string question() const;

    /// Returns all of it, schema "mxtool.coupler-difference" version 1.
    MXONLINE_API std::string json() const;
};

/// Compares what was read from the coupler at `target` with `plan`, whose map is stated.
///
/// A module that `state` does not have counts as not read.
///
/// A value that the module's description does not accept is shown as such; its registers are
/// compared all the same.
MXONLINE_API CouplerDifference compare(const mxstation::Plan& plan, const Target& target,
                                       const CouplerState& state);

} // namespace mxonline
