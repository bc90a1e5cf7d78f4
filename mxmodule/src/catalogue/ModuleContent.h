#pragma once

#include "DeviceReport.h"

#include <devices/database/ModuleContent.h>

namespace mxmodule {

/// Returns the content of a device for the tables of the catalogue: texts converted to UTF-8,
/// values as in the text of a `Module`.
devices::database::ModuleContent catalogueContent(const DeviceReport& device);

} // namespace mxmodule
