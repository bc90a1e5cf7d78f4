#pragma once

#include <cstdint>
#include <string>

namespace mxonline {

/// The value of a channel in a process image.
struct ChannelValue
{
    /// Of a channel with at most 64 bits; a signed one as two's complement of 64 bits. Otherwise 0.
    std::uint64_t number = 0;
    /// For people, and what sets it again: "1", "-5"; of a channel with more than 64 bits its bytes
    /// as hexadecimal digits, the lowest bits of the value in the first one: "0a 00".
    std::string text;
    /// The bits of the value as a hexadecimal number: "0xfffb"; empty for one bit, and for more
    /// than 64.
    std::string hex;
};

} // namespace mxonline
