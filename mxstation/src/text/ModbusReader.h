#pragma once

#include "text/YamlSection.h"

#include <mxstation/Modbus.h>

namespace mxstation {

/// Returns the registers that `node` describes; errors of it are added to `errors`, and its other
/// statements count.
ModbusMap readModbus(const YamlNode& node, StationErrors& errors);

} // namespace mxstation
