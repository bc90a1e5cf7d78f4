#include "ImageWalk.h"

#include <devices/parser/mx/MxParameterDatatype.h>

namespace mxauthor {

using devices::parser::mx::MxParameterDatatype;

void ImageWalk::passBits(std::uint32_t bits)
{
    openBits += bits;
    if (openBits >= 8) {
        // One byte, however many bits the channel has: so the device parser counts.
        openBits &= 7;
        ++byte;
        passed += 'B';
    }
}

void ImageWalk::passBytes(std::uint32_t start, const char* what, std::uint32_t size)
{
    const std::uint32_t from = openBits == 0 ? byte : start;
    passed += std::string(from - byte, 'B') + what;
    byte = from + size;
    openBits = 0;
}

void ImageWalk::pass(std::uint8_t kind, std::uint8_t bitLength)
{
    // These are the parser's own rules of alignment, which yield no multiples of 4 and 8.
    const std::uint32_t next = byte + 1;
    switch (static_cast<MxParameterDatatype>(kind)) {
    case MxParameterDatatype::Byte:
        passBits(bitLength);
        break;
    case MxParameterDatatype::UInt8:
    case MxParameterDatatype::SInt8:
        passBytes(next, "B", 1);
        break;
    case MxParameterDatatype::UInt16:
    case MxParameterDatatype::SInt16:
        passBytes((byte + 2) & ~1U, "W", 2);
        break;
    case MxParameterDatatype::UInt32:
    case MxParameterDatatype::SInt32:
        passBytes(next + (next & 3U), "D", 4);
        break;
    case MxParameterDatatype::UInt64:
    case MxParameterDatatype::SInt64:
        passBytes(next + (next & 7U), "DD", 8);
        break;
    }
}

std::string ImageWalk::codes() const
{
    return passed + (openBits == 0 ? "" : "B");
}

} // namespace mxauthor
