#pragma once

#include "config/AcceptedValue.h"

#include <string>
#include <utility>
#include <vector>

namespace mxtool {

/// Returns every parameter of `device` that matches `name` (UTF-8): "NAME", "CHANNEL/NAME" (the
/// channel's name, its number, or both as in tables; "module" for the module itself) or "#ID".
std::vector<const DeviceReport::Parameter*> parametersCalled(const std::string& name,
                                                             const DeviceReport& device);

/// Returns the only parameter that matches `name`. Throws an `InvalidInput` that lists the accepted
/// names when none or several match.
const DeviceReport::Parameter& parameterCalled(const std::string& name, const DeviceReport& device);

/// Returns the name of `parameter` for a command line, in UTF-8: "Filter", "AI 1/Filter" or "#12",
/// the shortest that matches no other parameter, can be typed, and has no "=" after the name of
/// another parameter.
std::string nameInCalls(const DeviceReport::Parameter& parameter, const DeviceReport& device);

/// Splits "NAME=VALUE" after the name of a parameter of `device`, or at the first "=" if no name
/// matches. Names and values may contain "=", so every "=" is tried: a reading is valid if the
/// parameter exists and `acceptedValue` accepts the value. Throws an `InvalidInput` that lists the
/// readings when not exactly one is valid, and when there is no "=".
std::pair<std::string, std::string> splitAssignment(const std::string& words,
                                                    const DeviceReport& device, ValueCheck check);

} // namespace mxtool
