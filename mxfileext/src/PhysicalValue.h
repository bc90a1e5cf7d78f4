#pragma once

#include "ModuleData.h"
#include "Parameter.h"

#include <cstdint>
#include <string>

namespace mxfileext {

/// Returns the conversion that `parameter` names, from the tables of `module`.
Conversion conversionOf(std::uint8_t module, const Parameter& parameter);

/// Returns the text with six decimals in which a physical value is shown.
std::string physicalText(float value);

} // namespace mxfileext
