#pragma once

#include "mxformat/WholeNumber.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace mxformat {

/// The type of a parameter's value. Channels number their kinds alike.
struct Datatype
{
    std::uint8_t number;
    const char* name; ///< As people write it.
    std::uint8_t bytes;
    bool isSigned; ///< In two's complement.

    /// Returns the number in an 8-byte slot: its last bytes, as many as the type has, in 64 bits
    /// and sign-extended where it is signed.
    constexpr std::uint64_t fromSlot(std::uint64_t slot) const
    {
        const unsigned unused = 64U - 8U * bytes;
        const std::uint64_t shifted = slot << unused;
        // A shift of a negative number fills with its sign.
        return isSigned ? static_cast<std::uint64_t>(static_cast<std::int64_t>(shifted) >> unused)
                        : shifted >> unused;
    }

    /// Returns the same as a number.
    WholeNumber numberInSlot(std::uint64_t slot) const
    {
        return WholeNumber::ofBits(fromSlot(slot), isSigned);
    }
};

/// Every datatype. The table is the one place that states them: number N is row N - 1.
inline constexpr std::array<Datatype, 9> datatypes = {{
    {1, "UInt8", 1, false},
    {2, "UInt16", 2, false},
    {3, "SInt8", 1, true},
    {4, "SInt16", 2, true},
    {5, "Byte", 1, false},
    {6, "UInt32", 4, false},
    {7, "SInt32", 4, true},
    {8, "UInt64", 8, false},
    {9, "SInt64", 8, true},
}};

/// The datatype that may be a bit field of its byte.
constexpr std::uint8_t bitFieldDatatype = 5;

/// Returns the datatype `number`, null for another number.
constexpr const Datatype* findDatatype(std::uint8_t number)
{
    return number >= 1 && number <= datatypes.size() ? &datatypes[number - std::size_t{1}]
                                                     : nullptr;
}

} // namespace mxformat
