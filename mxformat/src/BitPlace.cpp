#include "mxformat/BitPlace.h"

#include <algorithm>

namespace mxformat {

namespace {

constexpr unsigned bitsPerByte = 8;

} // namespace

BitPlace bitPlace(unsigned bitLength, unsigned bitOffset)
{
    if (bitOffset >= bitsPerByte) {
        return {};
    }
    const unsigned room = bitsPerByte - bitOffset;
    return {bitOffset, bitLength == 0 ? room : std::min(bitLength, room)};
}

bool leavesItsByte(unsigned bitLength, unsigned bitOffset)
{
    return bitOffset >= bitsPerByte || bitOffset + bitLength > bitsPerByte;
}

} // namespace mxformat
