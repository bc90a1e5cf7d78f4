#pragma once

#include <mxstation/Modbus.h>

namespace mxstation {

/// Returns whether both state the same, or nothing.
bool isSameModbus(const std::optional<ModbusMap>& a, const std::optional<ModbusMap>& b);

} // namespace mxstation
