#pragma once

#include "DeviceReport.h"

#include <devices/database/ModuleContent.h>

namespace mxtool {

/// Returns what the catalogue stores of a device: its texts as they are shown to people, values as
/// the verb `show` prints them.
devices::database::ModuleContent catalogueContent(const DeviceReport& device);

} // namespace mxtool
