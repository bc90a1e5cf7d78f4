#pragma once

#include "bus/RegisterRange.h"

#include <mxstation/Plan.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace mxonline {

/// The registers of one parameter of a module.
struct ParameterRegisters
{
    std::size_t parameter = 0; ///< Position in the parameters of the module.
    std::size_t first = 0;     ///< Its first one among those of the module, from 0.
    std::size_t count = 0;     ///< Number of registers.
};

/// The parameter registers of a planned module on its coupler.
class ModuleRegisters
{
public:
    /// `module`, whose image has a Modbus form, and `described` outlive the object.
    ModuleRegisters(const mxstation::PlannedModule& module, const mxstation::ModbusMap& described);

    const mxstation::PlannedModule& module() const { return planned; }

    /// Returns the registers of the parameters, ordered. A parameter may have several places, or
    /// none; none overlap.
    const std::vector<ParameterRegisters>& parameters() const { return places; }

    /// Returns the names by which the parameters are called, by position.
    const std::vector<std::string>& names() const { return callNames; }

    /// Returns the values of the station for people, by position.
    const std::vector<std::string>& shownValues() const { return plannedShown; }

    /// Returns the names of parameters that differ from the default and are in no register.
    const std::vector<std::string>& setWithoutRegisters() const { return unreachable; }

    /// Returns all registers of the module on the coupler, possibly none.
    RegisterRange range() const;

    /// Returns those of one parameter.
    RegisterRange range(const ParameterRegisters& one) const;

    /// Returns `registers`, those of the module in the order of the coupler, as
    /// `mxmodule::Module::registers` has them, or the reverse.
    std::vector<std::uint16_t> reordered(std::vector<std::uint16_t> registers) const;

private:
    const mxstation::PlannedModule& planned;
    const mxstation::ModbusMap& map;
    std::vector<ParameterRegisters> places;
    std::vector<std::string> callNames;
    std::vector<std::string> plannedShown;
    std::vector<std::string> unreachable;
};

/// Returns those of every module of `plan`, in the order of the row. Throws a `mxmodule::Failure`
/// with a finding for each module that has no Modbus form.
std::vector<ModuleRegisters> moduleRegisters(const mxstation::Plan& plan);

/// Returns the two registers with the identifier of `module`.
RegisterRange identifierRange(const ModuleRegisters& module, const mxstation::ModbusIdentity& map);

/// Returns `module 2 "Levels"`.
std::string moduleText(const mxstation::PlannedModule& module);

} // namespace mxonline
