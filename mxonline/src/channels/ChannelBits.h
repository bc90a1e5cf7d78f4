#pragma once

#include <mxstation/Plan.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mxonline {

/// The bytes of a whole process image, the first one at its first address.
using ProcessImage = std::vector<std::uint8_t>;

/// The bits of a channel's value, eight in each byte, the lowest first. Unused bits are 0.
using ValueBits = std::vector<std::uint8_t>;

/// Returns the image of `plan` in which `channel` is.
const mxstation::ImageBytes& imageOf(const mxstation::Plan& plan,
                                     const mxstation::Channel& channel);

/// Returns why `channel` has no value: "has no bits"; nothing if it has one.
std::optional<std::string> reasonWithoutValue(const mxstation::Plan& plan,
                                              const mxstation::Channel& channel);

/// Returns the bytes of the image, counted from its first, that contain `channel`, which has a
/// value.
mxstation::ImageBytes bytesOf(const mxstation::Plan& plan, const mxstation::Channel& channel);

/// Returns the value of `channel`, which has one, in `image`.
ValueBits bitsIn(const mxstation::Plan& plan, const mxstation::Channel& channel,
                 const ProcessImage& image);

/// Writes the value `bits` of `channel`, which has one, to `image`. No other bit changes.
void putBits(const mxstation::Plan& plan, const mxstation::Channel& channel, const ValueBits& bits,
             ProcessImage& image);

} // namespace mxonline
