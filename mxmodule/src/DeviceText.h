#pragma once

#include "DeviceReport.h"

namespace mxmodule {

/// Returns the device as aligned text for people.
std::string deviceText(const DeviceReport& report);

} // namespace mxmodule
