#pragma once

#include "ModuleData.h"
#include "ParameterField.h"

#include <cstdint>
#include <string>

namespace mxfileext {

/// Whether the parameter of `record` is shown in physical units.
bool isConverted(const std::uint8_t* record);

/// Returns the conversion that `record` names, from the tables of `module`.
Conversion conversionOf(std::uint8_t module, const std::uint8_t* record);

/// Returns the text with six decimals in which a physical value is shown.
std::string physicalText(float value);

} // namespace mxfileext
