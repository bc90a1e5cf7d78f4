#pragma once

#include <cstdint>

namespace devices::parser::mx {

/// What an mx file says about a channel beyond the data model.
struct MxChannelPrivateProps
{
    std::uint8_t channelNumber{}; ///< Number of the channel inside the module.
    std::uint32_t byteAddress{}; ///< First byte in the input or output image; 0 without an address.
    std::uint8_t bitOffset{};    ///< First bit within that byte.
    std::uint8_t bitLength{};    ///< Number of bits.
    std::uint8_t flagBit6{};     ///< Bit 6 of the kind byte, 0 or 1.
};

} // namespace devices::parser::mx
