#pragma once

#include "DeviceReport.h"

#include <text/Json.h>

namespace mxmodule {

/// Returns the whole device, schema "mxtool.device" version 1.
text::Json deviceJson(const DeviceReport& report);

} // namespace mxmodule
