#pragma once

#include <mxstation/Plan.h>

#include <cstddef>
#include <cstdint>
#include <string>

// Plans put together by hand, with channels of any size at any place.

namespace mxonline {

/// Returns a plan without channels, whose images begin at byte 10 (inputs) and 0 (outputs).
inline mxstation::Plan madePlan(std::uint64_t inputBytes, std::uint64_t outputBytes,
                                mxstation::ByteOrder order = mxstation::ByteOrder::Big)
{
    mxstation::Plan plan;
    plan.station = "Made";
    plan.layout.byteOrder = order;
    plan.input = {10, inputBytes};
    plan.output = {0, outputBytes};
    return plan;
}

/// Adds an input channel of whole bytes, which begins at `byte` of the image's addresses.
inline mxstation::Channel& addBytes(mxstation::Plan& plan, std::uint64_t byte, unsigned bytes,
                                    bool isSigned = false)
{
    mxstation::Channel& channel = plan.channels.emplace_back();
    channel.id = std::to_string(plan.channels.size());
    channel.number = static_cast<std::uint8_t>(plan.channels.size());
    channel.name = "C" + channel.id;
    channel.module = 1;
    channel.moduleName = "M";
    channel.isInput = true;
    channel.firstBit = byte * 8;
    channel.bits = bytes * 8;
    channel.isSigned = isSigned;
    return channel;
}

/// Adds an input channel of bits, which begins at a bit of the image's addresses.
inline mxstation::Channel& addField(mxstation::Plan& plan, std::uint64_t firstBit, unsigned bits)
{
    mxstation::Channel& channel = addBytes(plan, 0, 0);
    channel.firstBit = firstBit;
    channel.bits = bits;
    channel.isBitField = true;
    return channel;
}

} // namespace mxonline
