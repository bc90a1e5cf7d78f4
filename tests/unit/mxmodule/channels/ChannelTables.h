#pragma once

#include "channels/ChannelTable.h"

#include <fmt/format.h>

// Channel maps built by hand: each channel as the device parser would return it.

inline mxmodule::ChannelTable emptyMap(std::uint64_t inputSize, std::uint64_t outputSize = 0)
{
    return {"Module", "kv38.01020304", {0, inputSize}, {0, outputSize}, {}, {}};
}

inline mxmodule::ChannelTable::Channel bitChannel(const std::string& name, char area,
                                                  std::uint32_t byte, std::uint8_t bit)
{
    return {"1", 1, name, fmt::format("{}X{}_{}", area, byte, bit), area, 'X', byte, bit, 1, 1};
}

inline mxmodule::ChannelTable::Channel fieldChannel(const std::string& name, char area,
                                                    std::uint32_t byte, std::uint8_t bit,
                                                    std::uint8_t length)
{
    const unsigned mask = length >= 8 ? 255U : (1U << length) - 1;
    return {"2",    2,
            name,   fmt::format("{}B{}#{},{}", area, byte, bit, mask),
            area,   'B',
            byte,   bit,
            length, static_cast<std::uint8_t>(mask)};
}

inline mxmodule::ChannelTable::Channel wholeChannel(const std::string& name, char area, char letter,
                                                    std::uint32_t byte, std::uint8_t length)
{
    return {"3", 3,      name, fmt::format("{}{}{}", area, letter, byte), area, letter, byte,
            0,   length, 255};
}
