#pragma once

#include "DeviceReport.h"

#include <string>
#include <utility>
#include <vector>

namespace mxtool {

/// Returns every parameter of `device` that `name` (UTF-8) may mean: "NAME", "CHANNEL/NAME" (the
/// channel's name or number, "module" for the module itself) or "#ID".
std::vector<const DeviceReport::Parameter*> parametersCalled(const std::string& name,
                                                             const DeviceReport& device);

/// Returns the one parameter that `name` means. Throws a `Refusal` that lists what is accepted when
/// there is none or more than one.
const DeviceReport::Parameter& parameterCalled(const std::string& name, const DeviceReport& device);

/// Splits "NAME=VALUE" at the first "=" in front of which a parameter of `device` is named (names
/// may hold one), at the first of all when there is none. Throws a `Refusal` without any "=".
std::pair<std::string, std::string> splitAssignment(const std::string& words,
                                                    const DeviceReport& device);

} // namespace mxtool
