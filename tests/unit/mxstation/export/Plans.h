#pragma once

#include <mxstation/Plan.h>

#include <fmt/format.h>

#include <string>
#include <vector>

// Plans made by hand: each channel as a module at its offsets gives it.

inline unsigned bitsOfLetter(char letter)
{
    return letter == 'B' ? 8 : letter == 'W' ? 16 : letter == 'D' ? 32 : 64;
}

inline mxstation::Channel namedChannel(const std::string& name, char area, char letter,
                                       std::uint32_t byte)
{
    mxstation::Channel channel;
    channel.id = "7";
    channel.number = 3;
    channel.name = name;
    channel.isInput = area == 'I';
    channel.kind = letter;
    channel.byteAddress = byte;
    channel.module = 1;
    channel.moduleName = "Levels";
    return channel;
}

/// Of the bytes that the letter states: "IW2".
inline mxstation::Channel wholeAt(const std::string& name, char area, char letter,
                                  std::uint32_t byte)
{
    mxstation::Channel channel = namedChannel(name, area, letter, byte);
    channel.symbol = fmt::format("{}{}{}", area, letter, byte);
    channel.bits = bitsOfLetter(letter);
    channel.bitLength = static_cast<std::uint8_t>(channel.bits);
    channel.mask = 255;
    channel.firstBit = std::uint64_t{byte} * 8;
    return channel;
}

/// A bit field: "IB2#3,31" of five bits; one of one bit "IX2_3".
inline mxstation::Channel bitsAt(const std::string& name, char area, std::uint32_t byte,
                                 std::uint8_t bit, std::uint8_t length)
{
    mxstation::Channel channel = namedChannel(name, area, length == 1 ? 'X' : 'B', byte);
    channel.mask = static_cast<std::uint8_t>(length >= 8 ? 255U : (1U << length) - 1);
    channel.symbol = length == 1 ? fmt::format("{}X{}_{}", area, byte, bit)
                                 : fmt::format("{}B{}#{},{}", area, byte, bit, channel.mask);
    channel.bitOffset = bit;
    channel.bitLength = length;
    channel.firstBit = std::uint64_t{byte} * 8 + bit % 8U;
    channel.bits = length;
    channel.isBitField = true;
    return channel;
}

inline mxstation::Channel withSign(mxstation::Channel channel)
{
    channel.isSigned = true;
    return channel;
}

inline mxstation::Channel withNote(mxstation::Channel channel, const std::string& alias,
                                   const std::string& comment = {})
{
    channel.alias = alias;
    channel.comment = comment;
    return channel;
}

/// The images are bytes 0 to 31 each. The text of the station is "abc", its sum that of FIPS 180.
inline mxstation::Plan planOf(const std::vector<mxstation::Channel>& channels)
{
    mxstation::Plan plan;
    plan.station = "Pump house";
    plan.file = "pump-house.yaml";
    plan.source = "abc";
    plan.input = {0, 32};
    plan.output = {0, 32};
    plan.channels = channels;
    return plan;
}

constexpr const char* sumOfAbc = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";
