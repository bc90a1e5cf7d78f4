#pragma once

#include "MxBuffer.h"
#include "channels/ChannelTable.h"

#include <mxmodule/Module.h>

#include <fmt/format.h>

// Channel maps built by hand: each channel as the device parser would return it.

inline mxmodule::ChannelTable emptyMap(std::uint64_t inputSize, std::uint64_t outputSize = 0)
{
    return {"Module", "kv38.01020304", {0, inputSize}, {0, outputSize}, {}, {}, {}, {}};
}

// The bit `offset` of the byte `byte` in the image; whole bytes of the offset are in `byte`
// already.
inline std::uint64_t bitAt(std::uint32_t byte, std::uint8_t offset)
{
    return std::uint64_t{byte} * 8 + offset % 8U;
}

inline mxmodule::MappedChannel bitChannel(const std::string& name, char area, std::uint32_t byte,
                                          std::uint8_t bit)
{
    return {"1",
            1,
            name,
            area == 'I',
            fmt::format("{}X{}_{}", area, byte, bit),
            'X',
            byte,
            bit,
            1,
            1,
            false,
            bitAt(byte, bit),
            1,
            true};
}

inline mxmodule::MappedChannel fieldChannel(const std::string& name, char area, std::uint32_t byte,
                                            std::uint8_t bit, std::uint8_t length)
{
    const unsigned mask = length >= 8 ? 255U : (1U << length) - 1;
    return {"2",
            2,
            name,
            area == 'I',
            fmt::format("{}B{}#{},{}", area, byte, bit, mask),
            'B',
            byte,
            bit,
            length,
            static_cast<std::uint8_t>(mask),
            false,
            bitAt(byte, bit),
            length,
            true};
}

/// `length` is that of the letter, in bits.
inline mxmodule::MappedChannel wholeChannel(const std::string& name, char area, char letter,
                                            std::uint32_t byte, std::uint8_t length)
{
    return {"3",
            3,
            name,
            area == 'I',
            fmt::format("{}{}{}", area, letter, byte),
            letter,
            byte,
            0,
            length,
            255,
            false,
            bitAt(byte, 0),
            length,
            false};
}

/// Returns the map of a module with these channel records and the data sizes of `minimalModule`.
/// Channel 6 is called `name`.
inline mxmodule::ChannelMap mapOfRecords(const std::vector<testkit::ChannelRecord>& records,
                                         const std::string& name = "Six",
                                         mxmodule::ImageOffsets offsets = {})
{
    testkit::Bytes payload;
    for (const testkit::ChannelRecord& record : records) {
        const auto bytes = record.bytes();
        payload.insert(payload.end(), bytes.begin(), bytes.end());
    }
    const auto bytes = testkit::minimalModule()
                           .group(0x20D7, testkit::hexBytes("06 00 05"))
                           .group(0x20D3, testkit::textTablePayload({{5, name}}))
                           .group(0x20D0, payload)
                           .chars();
    return mxmodule::Module::fromBytes(bytes).at(offsets).channelMap();
}
