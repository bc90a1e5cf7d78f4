#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

// Frames of Modbus RTU: unit, function, data, and a checksum with its low byte first.

namespace mxonline {

/// Returns the frame with `request`, a function code and its data, for `unit`.
std::vector<std::uint8_t> rtuFrame(std::uint8_t unit, const std::vector<std::uint8_t>& request);

/// Returns whether `frame`, of at least four bytes, ends with its checksum.
bool hasRtuChecksum(const std::vector<std::uint8_t>& frame);

/// Returns the size of the answer whose first three bytes are `beginning`; nothing for a function
/// that is not used here.
std::optional<std::size_t> rtuAnswerSize(const std::vector<std::uint8_t>& beginning);

} // namespace mxonline
