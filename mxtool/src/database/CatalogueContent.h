#pragma once

#include "DeviceReport.h"

#include <devices/database/ModuleContent.h>

namespace mxtool {

/// Returns the content of a device for the catalogue: texts converted to UTF-8, values as printed
/// by the verb `show`.
devices::database::ModuleContent catalogueContent(const DeviceReport& device);

} // namespace mxtool
