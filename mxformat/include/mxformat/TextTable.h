#pragma once

#include <cstdint>

namespace mxformat {

/// @name The payload of the group `texts`: bytes that nothing reads, then records of a text
/// identifier (u16), the text and its line end.
/// @{
constexpr std::uint32_t textTableHeaderSize = 2; ///< In bytes, as are the others.
constexpr std::uint32_t textIdSize = 2;
constexpr std::uint32_t lineEndSize = 2; ///< Carriage return and line feed, in all groups of texts.
/// @}

/// Whether a text ends before `byte`.
constexpr bool endsText(std::uint8_t byte)
{
    return byte == 0x00 || byte == '\r';
}

} // namespace mxformat
