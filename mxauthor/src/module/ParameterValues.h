#pragma once

#include "mxauthor/groups/Parameters.h"

#include <array>
#include <string>

namespace mxauthor {

/// A number in 64 bits, as wide values of parameters travel: sign-extended when it is signed.
struct WideNumber
{
    std::uint64_t bits = 0;
    bool isSigned = false;

    bool isBelow(const WideNumber& other) const;
    std::string text() const; ///< In decimal.
};

/// The value of a parameter as the companion library decodes it.
struct ParameterValue
{
    bool known = false;   ///< Whether the datatype is one.
    bool present = false; ///< Whether the value lies within the block.
    unsigned size = 0;    ///< In bytes; 0 for an unknown datatype.
    bool isSigned = false;
    unsigned byteOffset = 0; ///< In the block.
    unsigned firstBit = 0;   ///< In the block, counted from bit 0 of byte 0.
    unsigned bits = 0;
    WideNumber value;
    WideNumber minimum; ///< The natural one where none is stated.
    WideNumber maximum;
};

/// Decodes the values of `records` from the parameter block `block`.
std::vector<ParameterValue> parameterValues(const std::vector<ParameterRecord>& records,
                                            const Bytes& block);

/// Whether the number in the 8-byte slot `slot` can be a value of `parameter`. A signed value may
/// be sign-extended, or zero-extended from its own size.
bool holdsSlot(const ParameterValue& parameter, std::uint64_t slot);

/// Returns the number that readers take from `slot`: its last bytes, as many as the value has.
WideNumber numberOfSlot(const ParameterValue& parameter, std::uint64_t slot);

/// The names of the datatypes 1 to 9.
constexpr std::array<const char*, 10> datatypeNames = {
    "", "UInt8", "UInt16", "SInt8", "SInt16", "Byte", "UInt32", "SInt32", "UInt64", "SInt64"};

constexpr std::uint8_t byteDatatype = 5;     ///< The one that may be a bit field.
constexpr std::uint8_t convertedFlag = 0x04; ///< In `flags`: shown in physical units.
constexpr std::uint8_t moduleChannel = 255;  ///< In `channel`: the module itself.
constexpr std::uint8_t positionBase = 4;     ///< Of `position`: byte 0 of the block.

} // namespace mxauthor
