#pragma once

#include "DeviceReport.h"
#include "TranslatedModule.h"

#include <string>
#include <vector>

namespace mxtool {

/// Returns the number of bytes that `module` is configured with on `fieldbus`.
std::size_t decodedSize(devices::parser::FieldbusType fieldbus, TranslatedModule& module);

/// Returns the raw parameter image that `bytes` are on `fieldbus`: the image itself, or the Modbus
/// registers of `module`. Throws a `Failure` with `place`, where the bytes come from, when the
/// module could not have been configured with them.
std::vector<char> decodedImage(const std::vector<char>& bytes,
                               devices::parser::FieldbusType fieldbus, TranslatedModule& module,
                               const std::string& place);

/// Throws a `Failure` with `place` when `image` has another size than the parameter image of
/// `device`.
void requireImageSize(const std::vector<char>& image, const DeviceReport& device,
                      const std::string& place);

} // namespace mxtool
