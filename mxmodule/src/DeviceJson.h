#pragma once

#include "DeviceReport.h"
#include "configuration/ParameterNames.h"

#include <text/Json.h>

namespace mxmodule {

/// Returns the whole device, schema "mxtool.device" version 2.
text::Json deviceJson(const DeviceReport& report, const ParameterNames& names);

} // namespace mxmodule
