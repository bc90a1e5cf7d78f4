#pragma once

#include "DeviceReport.h"
#include "TranslatedModule.h"
#include "configuration/ParameterPlace.h"

#include <optional>
#include <string>
#include <vector>

namespace mxmodule {

/// Returns the size of the configuration of `module` on `fieldbus`, in bytes.
std::size_t decodedSize(Fieldbus fieldbus, const TranslatedModule& module);

/// Returns the raw parameter image for `bytes`, which are that image or the Modbus registers of
/// `module`, as `fieldbus` states. Throws a `Failure` with `place`, the origin of the bytes, when
/// they are not a configuration of the module.
std::vector<char> decodedImage(const std::vector<char>& bytes, Fieldbus fieldbus,
                               const TranslatedModule& module, const std::string& place);

/// Returns an error at `place` if `image` has another size than the parameter image `own` of its
/// module.
std::optional<Finding> sizeFinding(const std::vector<char>& image, const std::vector<char>& own,
                                   const std::string& place);

/// Throws a `Failure` with `place` when `image` has another size than the parameter image `own` of
/// its module.
void requireImageSize(const std::vector<char>& image, const std::vector<char>& own,
                      const std::string& place);

/// Throws a `Failure` at `place` when `deviceTypeId` is not the module type of `device`, which the
/// file `module` describes. An empty `deviceTypeId` is accepted.
void requireIdentity(const std::string& deviceTypeId, const DeviceReport& device,
                     const std::string& module, const std::string& place);

/// Returns the size of the registers of `places`, in bytes.
std::size_t sizeOfRegisters(const std::vector<ParameterPlace>& places);

/// Converts the Modbus registers of `device` to its raw parameter image.
///
/// `places` are the places of the parameters in the registers. All other bits are taken from
/// `image`, the device's own image. Throws an `InvalidInput` when the size is wrong or a value is
/// not one that the module can have.
std::vector<char> imageOfRegisters(const std::vector<char>& registers,
                                   const std::vector<ParameterPlace>& places,
                                   const DeviceReport& device, std::vector<char> image);

} // namespace mxmodule
