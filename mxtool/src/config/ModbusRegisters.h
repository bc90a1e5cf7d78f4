#pragma once

#include "config/ParameterPlace.h"

namespace mxtool {

/// Returns the number of bytes of the registers that hold `places`.
std::size_t sizeOfRegisters(const std::vector<ParameterPlace>& places);

/// Returns the raw parameter image that the Modbus registers `registers` of `device` stand for.
///
/// `places` are the parameters in them. Bits that they do not hold come from `image`, the device's
/// own. Throws a `Refusal` when the size or the value of a parameter is none that the module gives.
std::vector<char> imageOfRegisters(const std::vector<char>& registers,
                                   const std::vector<ParameterPlace>& places,
                                   const DeviceReport& device, std::vector<char> image);

} // namespace mxtool
