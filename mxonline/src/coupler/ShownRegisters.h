#pragma once

#include "coupler/ModuleRegisters.h"

#include <mxmodule/Module.h>

#include <optional>
#include <string>
#include <vector>

namespace mxonline {

/// A value that was read.
struct ReadValue
{
    std::string shown;                  ///< "50 Hz"; `no value: REASON` if there is none.
    std::optional<std::string> problem; ///< Why a station cannot state it.
};

/// The values in the parameter registers of a module, for people.
class ShownRegisters
{
public:
    /// `module` outlives the object. `readWords` are as `mxmodule::Module::registers` has them.
    ShownRegisters(const ModuleRegisters& module, std::vector<std::uint16_t> readWords);

    /// Returns the value that was read: "50 Hz"; `no value: REASON` if the module's description has
    /// none for these registers.
    std::string read(const ParameterRegisters& one) const { return value(one).shown; }

    /// Returns the same, and whether a station can state it.
    ReadValue value(const ParameterRegisters& one) const;

    /// Returns whether all registers of the module together are values of it.
    bool areValues() const { return readParameters.has_value(); }

private:
    const ModuleRegisters& registers;
    std::vector<std::uint16_t> words;
    std::optional<std::vector<mxmodule::Parameter>> readParameters; // nothing: not all are values
};

} // namespace mxonline
