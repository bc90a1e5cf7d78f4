#pragma once

#include "configuration/AcceptedValue.h"

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace mxmodule {

/// The parameters of a device by their names.
class ParameterNames
{
public:
    /// `described` must outlive the object.
    ParameterNames(const DeviceReport& described); // implicit: a device has the names

    const DeviceReport& device() const { return *described; }

    /// Returns the position of each parameter that matches `name` (UTF-8), in order: "NAME",
    /// "CHANNEL/NAME" (the channel's name, its number, or both as in tables; "module" for the
    /// module itself) or "#ID".
    std::vector<std::size_t> positionsOf(const std::string& name) const;

private:
    using Positions = std::unordered_map<std::string, std::vector<std::size_t>>;

    const DeviceReport* described;
    Positions byId;
    Positions byName;
    std::size_t longest = 0; // bytes of the longest name
};

/// Returns every parameter that matches `name`, as `positionsOf` states.
std::vector<const DeviceReport::Parameter*> parametersCalled(const std::string& name,
                                                             const ParameterNames& names);

/// Returns the only parameter that matches `name`. Throws an `InvalidInput` that lists the accepted
/// names when none or several match.
const DeviceReport::Parameter& parameterCalled(const std::string& name,
                                               const ParameterNames& names);

/// Returns the name of `parameter` for a command line, in UTF-8: "Filter", "AI 1/Filter" or "#12",
/// the shortest that matches no other parameter, can be typed, and has no "=" after the name of
/// another parameter.
std::string nameInCalls(const DeviceReport::Parameter& parameter, const ParameterNames& names);

/// Splits "NAME=VALUE" after the name of a parameter, or at the first "=" if no name matches. Names
/// and values may contain "=", so every "=" is tried: a reading is valid if the parameter exists
/// and `acceptedValue` accepts the value. Throws an `InvalidInput` that lists the readings when not
/// exactly one is valid, and when there is no "=".
std::pair<std::string, std::string> splitAssignment(const std::string& words,
                                                    const ParameterNames& names, ValueCheck check);

} // namespace mxmodule
