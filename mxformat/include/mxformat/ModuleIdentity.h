#pragma once

#include <cstdint>

namespace mxformat {

/// The dataset of the group `identity` that identifies the module: type (u8) and module identifier
/// (u32).
constexpr std::uint8_t identityDataset = 0xFB;
constexpr std::uint32_t identitySize = 5;   ///< Of that dataset, in bytes.
constexpr std::uint32_t moduleIdOffset = 1; ///< In its data, in bytes.

/// A dataset states its length in a byte. From this value on it ends the list.
constexpr std::uint8_t datasetLengthLimit = 128;

constexpr std::uint32_t datasetHeaderSize = 3;  ///< Identifier, length and a byte that is not read.
constexpr std::uint32_t datasetTrailerSize = 2; ///< After the data.

} // namespace mxformat
