#pragma once

#include "coupler/ModuleRegisters.h"

#include <mxmodule/Module.h>

#include <optional>
#include <string>
#include <vector>

namespace mxonline {

/// The values in the parameter registers of a module, for people.
class ShownRegisters
{
public:
    /// `module` outlives the object. `readWords` are as `mxmodule::Module::registers` has them.
    ShownRegisters(const ModuleRegisters& module, std::vector<std::uint16_t> readWords);

    /// Returns the value that was read: "50 Hz"; `no value: REASON` if the module's description has
    /// none for these registers.
    std::string read(const ParameterRegisters& one) const;

private:
    const ModuleRegisters& registers;
    std::vector<std::uint16_t> words;
    std::optional<std::vector<mxmodule::Parameter>> readParameters; // nothing: not all are values
};

/// Returns registers as bytes, each with its high byte first.
std::vector<char> bytesOfRegisters(const std::vector<std::uint16_t>& registers);

} // namespace mxonline
