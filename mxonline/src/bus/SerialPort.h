#pragma once

#include "bus/ModbusContext.h"

#include <mxonline/Target.h>

#include <cstdint>

namespace mxonline {

/// Opens the serial line of `target` for `unit` and sets it up. Throws a `LineError`.
ModbusContext openSerial(const SerialTarget& target, std::uint8_t unit);

} // namespace mxonline
