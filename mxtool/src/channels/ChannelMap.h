#pragma once

#include "DeviceReport.h"

namespace mxtool {

/// Where the channels of a module lie in the process images.
struct ChannelMap
{
    /// The bytes that the module has in one image.
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
        std::uint8_t bitOffset; ///< As the mx file has it; may be above 7.
        std::uint8_t bitLength;
        std::uint8_t mask;
        bool isSigned = false; ///< Whether the value has a sign; never true of a bit field.

        bool isInput() const { return area == 'I'; }
        const char* direction() const { return isInput() ? "in" : "out"; }

        /// Whether single bits are addressed, else whole bytes as the size letter says.
        bool isBitField() const;

        /// Returns the first bit in the image, counted from byte 0. The byte address counts whole
        /// bytes already, so only the place within the byte counts of the bit offset.
        std::uint64_t firstBit() const;

        /// Returns how many bits of the image the channel holds, at most 255.
        unsigned bits() const;
    };

    std::string label;
    std::string deviceTypeId;
    Data input;
    Data output;
    std::vector<Channel> channels;                    ///< In the order of the device.
    std::vector<DeviceReport::Channel> withoutSymbol; ///< These lie in no image.
};

/// Joins the mapping list that `parser` gives for `device` with the channels of the device and with
/// their records in its mx data. The parser logs each channel that has no symbol.
ChannelMap makeChannelMap(devices::parser::IDeviceParser& parser,
                          devices::parser::mx::Parser_kv38::DeviceP& device,
                          const std::vector<char>& mxData);

} // namespace mxtool
