#pragma once

#include "mxmodule/ChannelMap.h"
#include "mxmodule/MxmoduleApi.h"

#include <cstdint>
#include <string>
#include <vector>

// Channels as variables of IEC 61131-3.

namespace mxmodule {

/// A variable by which a program of IEC 61131-3 reads or writes a channel or one bit of it.
struct IecVariable
{
    std::string suffix;         ///< After the channel's identifier: empty, or "_Bit3" for a bit.
    std::string type;           ///< "BOOL", "INT", "BYTE", ...; of an array that of its elements.
    unsigned elements = 0;      ///< Of an array that begins with 0; 0: no array.
    bool isInput = false;       ///< In the input image, otherwise in the output image.
    char size = 0;              ///< Of its address: 'X', 'B', 'W', 'D' or 'L'.
    std::uint64_t firstBit = 0; ///< In the image, counted from byte 0; of 'X' the only one.
    unsigned bit = 0;           ///< The bit of the channel that a "_Bit3" is, from 0.
    unsigned bits = 0;          ///< Number of bits of the channel.
};

/// Returns the variables for `channel`, in the order of their addresses; none if no type holds it.
///
/// A bit field becomes one BOOL per bit, because a variable of whole bytes would include, and
/// write, bits of its neighbours. A bit field that fills whole bytes becomes a BYTE or an array of
/// BYTE; of any other of more than 32 bits, or of none, there is no variable.
MXMODULE_API std::vector<IecVariable> iecVariables(const MappedChannel& channel);

/// Returns the name of `channel` as an identifier of at most 100 letters, digits and single
/// underscores that is no keyword: "Channel_3" with the channel's number if no character of the
/// name can be kept. Several channels may have the same.
MXMODULE_API std::string iecIdentifier(const MappedChannel& channel);

/// Returns the type as in a declaration: "BOOL", "ARRAY [0..2] OF BYTE".
MXMODULE_API std::string iecTypeText(const IecVariable& variable);

/// Returns the address counted in bytes, whatever its size: "%IX0.3", "%QW2".
MXMODULE_API std::string iecByteAddress(const IecVariable& variable);

/// The same for the bit `bit` of an image, counted from byte 0: "%IX2.3".
MXMODULE_API std::string iecBitAddress(bool isInput, std::uint64_t bit);

} // namespace mxmodule
