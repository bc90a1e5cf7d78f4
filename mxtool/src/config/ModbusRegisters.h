#pragma once

#include "config/ParameterPlace.h"

namespace mxtool {

/// Returns the size of the registers of `places`, in bytes.
std::size_t sizeOfRegisters(const std::vector<ParameterPlace>& places);

/// Converts the Modbus registers of `device` to its raw parameter image.
///
/// `places` are the places of the parameters in the registers. All other bits are taken from
/// `image`, the device's own image. Throws a `InvalidInput` when the size is wrong or a value is
/// not one that the module can have.
std::vector<char> imageOfRegisters(const std::vector<char>& registers,
                                   const std::vector<ParameterPlace>& places,
                                   const DeviceReport& device, std::vector<char> image);

} // namespace mxtool
