#pragma once

#include "DeviceReport.h"

#include <string>

namespace mxtool {

/// Throws a `Failure` at `place` when `deviceTypeId` is that of another module type than `device`,
/// which the file `module` describes. An empty one says nothing.
void requireIdentity(const std::string& deviceTypeId, const DeviceReport& device,
                     const std::string& module, const std::string& place);

} // namespace mxtool
