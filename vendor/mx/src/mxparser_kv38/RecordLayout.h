#pragma once

#include <cstdint>

namespace devices::parser::mx {

/// Bytes of a record of group 0x20c0.
constexpr std::uint32_t parameterRecordSize = 29;

/// Bytes of a record of group 0x20d0 in front of its 16-bit words, which are never read.
constexpr std::uint32_t channelRecordHeaderSize = 7;

/// Channel number of the module's own parameters.
constexpr std::uint8_t moduleLevel = 255;

} // namespace devices::parser::mx
