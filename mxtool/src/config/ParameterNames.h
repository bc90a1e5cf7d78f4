#pragma once

#include "config/AcceptedValue.h"

#include <string>
#include <utility>
#include <vector>

namespace mxtool {

/// Returns every parameter of `device` that `name` (UTF-8) may mean: "NAME", "CHANNEL/NAME" (the
/// channel's name, number, or both as tables show them; "module" for the module itself) or "#ID".
std::vector<const DeviceReport::Parameter*> parametersCalled(const std::string& name,
                                                             const DeviceReport& device);

/// Returns the one parameter that `name` means. Throws a `Refusal` that lists what is accepted when
/// there is none or more than one.
const DeviceReport::Parameter& parameterCalled(const std::string& name, const DeviceReport& device);

/// Returns how a call names `parameter` of `device`, in UTF-8: "Filter", "AI 1/Filter" or "#12",
/// the shortest that means no other parameter, can be typed and has no "=" after another one's
/// name.
std::string nameInCalls(const DeviceReport::Parameter& parameter, const DeviceReport& device);

/// Splits "NAME=VALUE" after the name of a parameter of `device`, at the first "=" when there is
/// none. Names and values may hold "=": a reading counts where the parameter exists and accepts the
/// value, as `acceptedValue` says. Throws a `Refusal` with all readings unless one alone counts,
/// and without any "=".
std::pair<std::string, std::string> splitAssignment(const std::string& words,
                                                    const DeviceReport& device, ValueCheck check);

} // namespace mxtool
