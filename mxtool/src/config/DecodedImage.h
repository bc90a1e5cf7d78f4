#pragma once

#include "DeviceReport.h"
#include "TranslatedModule.h"

#include <string>
#include <vector>

namespace mxtool {

/// Returns the size of the configuration of `module` on `fieldbus`, in bytes.
std::size_t decodedSize(devices::parser::FieldbusType fieldbus, TranslatedModule& module);

/// Returns the raw parameter image for `bytes`, which are that image or the Modbus registers of
/// `module`, as `fieldbus` states. Throws a `Failure` with `place`, the origin of the bytes, when
/// they are not a configuration of the module.
std::vector<char> decodedImage(const std::vector<char>& bytes,
                               devices::parser::FieldbusType fieldbus, TranslatedModule& module,
                               const std::string& place);

/// Throws a `Failure` with `place` when the size of `image` is not that of the parameter image of
/// `device`.
void requireImageSize(const std::vector<char>& image, const DeviceReport& device,
                      const std::string& place);

} // namespace mxtool
