#include "BlockCursor.h"

namespace mxauthor {

namespace {

constexpr std::uint32_t bitsOfByte = 8;

bool isBitField(std::uint8_t datatype, std::uint8_t bits)
{
    return datatype == mxformat::bitFieldDatatype && bits != 0;
}

} // namespace

std::uint32_t BlockCursor::byteFor(std::uint8_t datatype, std::uint8_t bits) const
{
    const bool fits = isBitField(datatype, bits) && bit + bits <= bitsOfByte;
    return bit == 0 || fits ? byte : byte + 1;
}

std::uint8_t BlockCursor::bitFor(std::uint8_t datatype, std::uint8_t bits, std::uint32_t at) const
{
    const bool fits = isBitField(datatype, bits) && bit + bits <= bitsOfByte;
    return fits && at == byte ? static_cast<std::uint8_t>(bit) : std::uint8_t{0};
}

void BlockCursor::pass(const ParameterRecord& record)
{
    const mxformat::BlockField field = blockFieldOf(record);
    if (!field.exists()) {
        return;
    }
    const std::uint32_t endBit = field.firstBit() + field.bits();
    const bool opensByte = field.size() == 1 && endBit < bitsOfByte;
    byte = opensByte ? field.begin() : field.end();
    bit = opensByte ? endBit : 0;
}

} // namespace mxauthor
