#pragma once

#include <cstdint>

namespace devices::parser::mx {

/// Datatype of a parameter or option value, as mx records store it. Any other number is invalid.
/// Values in a parameter block are big-endian.
enum class MxParameterDatatype : std::uint8_t
{
    UInt8 = 1,  ///< 1 byte, unsigned.
    UInt16 = 2, ///< 2 bytes, unsigned.
    SInt8 = 3,  ///< 1 byte, two's complement.
    SInt16 = 4, ///< 2 bytes, two's complement.
    Byte = 5,   ///< Like `UInt8`, but possibly only a bit field of the byte.
    UInt32 = 6, ///< 4 bytes, unsigned.
    SInt32 = 7, ///< 4 bytes, two's complement.
    UInt64 = 8, ///< 8 bytes, unsigned.
    SInt64 = 9  ///< 8 bytes, two's complement.
};

} // namespace devices::parser::mx
