#pragma once

#include <cstdint>

namespace mxformat {

/// @name The payload of the group `extension`: version (u8), GTIN text identifier (u16, 0: none),
/// calibration date.
/// @{
constexpr std::uint32_t gtinOffset = 1;                ///< Of the text identifier, in bytes.
constexpr std::uint32_t calibrationDateSize = 10;      ///< In bytes.
constexpr std::uint8_t extensionVersion = 1;           ///< The only one there is.
constexpr std::uint32_t calibrationDateOffset = 3;     ///< In bytes.
constexpr std::uint32_t calibrationDateReadLength = 9; ///< Readers take no more of them.
constexpr std::uint32_t extensionSize = calibrationDateOffset + calibrationDateSize;
/// @}

} // namespace mxformat
