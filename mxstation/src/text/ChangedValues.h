#pragma once

#include <mxstation/Plan.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace mxstation {

/// The value of a parameter as a station states it.
struct ChangedValue
{
    std::size_t parameter = 0; ///< Position in the parameters of the module.
    std::string group;         ///< Name of the channel under which it is stated; empty: none.
    std::string name;          ///< Of the parameter, in the group.
    std::string value;         ///< As `mxmodule::Assignment::value`.
    bool isDefault = false;    ///< It is that of the mx file.
};

/// Returns the values in `registers` that differ from those of `module`, in the order of its
/// parameters. Throws a `mxmodule::Failure` when the registers are no configuration of it.
std::vector<ChangedValue> changedValues(const PlannedModule& module,
                                        const std::vector<std::uint16_t>& registers);

/// Returns the parameter `parameter` of `module` as a station names it, with its default value.
ChangedValue parameterOf(const mxmodule::Module& module, std::size_t parameter);

} // namespace mxstation
