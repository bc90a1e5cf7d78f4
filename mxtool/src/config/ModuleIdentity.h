#pragma once

#include "DeviceReport.h"

#include <string>

namespace mxtool {

/// Throws a `Failure` at `place` when `deviceTypeId` is not the module type of `device`, which the
/// file `module` describes. An empty `deviceTypeId` is accepted.
void requireIdentity(const std::string& deviceTypeId, const DeviceReport& device,
                     const std::string& module, const std::string& place);

} // namespace mxtool
