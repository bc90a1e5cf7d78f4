#include "config/ModuleIdentity.h"

#include "Diagnostic.h"

#include <fmt/format.h>

namespace mxtool {

void requireIdentity(const std::string& deviceTypeId, const DeviceReport& device,
                     const std::string& module, const std::string& place)
{
    if (!deviceTypeId.empty() && deviceTypeId != device.deviceTypeId) {
        throw Failure(ExitCode::Input, place,
                      fmt::format("The values are those of a {}, expected a {} as {} is",
                                  deviceTypeId, device.deviceTypeId, module));
    }
}

} // namespace mxtool
