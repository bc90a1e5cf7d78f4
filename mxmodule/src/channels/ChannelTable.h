#pragma once

#include "DeviceReport.h"

namespace mxmodule {

/// The places of a module's channels in the process images.
struct ChannelTable
{
    /// The bytes of the module in one image.
    struct Data
    {
        std::uint64_t firstByte;
        std::uint64_t size;
    };

    /// A channel with an IEC symbol.
    struct Channel
    {
        std::string id;
        std::uint8_t number;
        std::string name; ///< Bytes of the mx file.
        std::string symbol;
        char area;       ///< 'I' or 'Q'.
        char sizeLetter; ///< 'X', 'B', 'W', 'D' or 'L'.
        std::uint32_t byteAddress;
        std::uint8_t bitOffset; ///< As in the mx file; may be above 7.
        std::uint8_t bitLength;
        std::uint8_t mask;
        bool isSigned = false; ///< Whether the value is signed; false for a bit field.

        bool isInput() const { return area == 'I'; }
        const char* direction() const { return isInput() ? "in" : "out"; }

        /// Whether bits are addressed; otherwise whole bytes, as the size letter states.
        bool isBitField() const;

        /// Returns the first bit in the image, counted from byte 0: the byte address and the bit
        /// offset modulo 8, as the byte address already includes whole bytes.
        std::uint64_t firstBit() const;

        /// Returns the number of bits of the channel, at most 255.
        unsigned bits() const;
    };

    std::string label;
    std::string deviceTypeId;
    Data input;
    Data output;
    std::vector<Channel> channels;                    ///< In the order of the device.
    std::vector<DeviceReport::Channel> withoutSymbol; ///< Channels in no image.
};

/// Combines the mapping list of `parser` for `device` with the channels of its `report` and their
/// records in the mx data. The parser logs each channel without a symbol.
ChannelTable makeChannelTable(devices::parser::IDeviceParser& parser,
                              devices::parser::mx::Parser_kv38::DeviceP& device,
                              const DeviceReport& report, const std::vector<char>& mxData);

} // namespace mxmodule
