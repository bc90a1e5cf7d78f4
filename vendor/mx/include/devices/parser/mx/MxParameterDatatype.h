#pragma once

#include <cstdint>

namespace devices::parser::mx {

/// Datatype of a parameter or option value, as mx records store it. Any other number is invalid.
enum class MxParameterDatatype : std::uint8_t
{
    UInt8 = 1,
    UInt16 = 2,
    SInt8 = 3,
    SInt16 = 4,
    Byte = 5, ///< Like `UInt8`, but possibly only a bit field of the byte.
    UInt32 = 6,
    SInt32 = 7,
    UInt64 = 8,
    SInt64 = 9
};

} // namespace devices::parser::mx
