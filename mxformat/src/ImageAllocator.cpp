#include "mxformat/ImageAllocator.h"

#include "mxformat/Datatype.h"

namespace mxformat {

namespace {

// Where a value of `size` bytes starts when bits of the byte `byte` are already taken.
std::uint32_t afterOpenByte(std::uint32_t byte, std::uint8_t size)
{
    const std::uint32_t next = byte + 1;
    switch (size) {
    case 2:
        return (byte + 2) & ~1U;
    case 4:
        return next + (next & 3U);
    case 8:
        return next + (next & 7U);
    default:
        return next;
    }
}

// The IEC size letter of a value of `size` bytes.
char letterOf(std::uint8_t size)
{
    switch (size) {
    case 1:
        return 'B';
    case 2:
        return 'W';
    case 4:
        return 'D';
    default:
        return 'L';
    }
}

std::uint32_t allBits(std::uint8_t count)
{
    return count >= 32 ? 0xFFFFFFFFU : (1U << count) - 1;
}

} // namespace

std::uint8_t bytesOfSizeLetter(char sizeLetter)
{
    for (const Datatype& type : datatypes) {
        if (letterOf(type.bytes) == sizeLetter) {
            return type.bytes;
        }
    }
    return 0;
}

std::string ChannelPlace::symbol(bool isInput, std::uint8_t bitLength, std::uint8_t bitOffset) const
{
    std::string text = {isInput ? 'I' : 'Q', sizeLetter};
    text += std::to_string(byte);
    if (isBitField) {
        text += (bitLength == 1 ? "_" : "#") + std::to_string(bitOffset);
        if (bitLength != 1) {
            text += "," + std::to_string(allBits(bitLength));
        }
    }
    return text;
}

void ImageAllocator::passBit()
{
    nextBit += 1;
    if (nextBit % 8 == 0) {
        nextBit = 0;
        nextByte += 1;
    }
}

// However long the field, the image grows by one byte at most.
void ImageAllocator::passBits(std::uint8_t count)
{
    nextBit += count;
    if (nextBit >= 8) {
        nextBit &= 7U;
        nextByte += 1;
    }
}

ChannelPlace ImageAllocator::takeBits(std::uint8_t bitLength)
{
    const std::uint32_t byte = nextByte;
    if (bitLength == 1) {
        passBit();
        return {'X', byte, 1, true};
    }
    passBits(bitLength);
    return {'B', byte, 1, true};
}

std::optional<ChannelPlace> ImageAllocator::take(std::uint8_t kindNumber, std::uint8_t bitLength)
{
    const Datatype* const type = findDatatype(kindNumber);
    if (type == nullptr) {
        return std::nullopt;
    }
    if (kindNumber == bitFieldDatatype) {
        return takeBits(bitLength);
    }
    if (nextBit != 0) {
        nextByte = afterOpenByte(nextByte, type->bytes);
        nextBit = 0;
    }
    const ChannelPlace place{letterOf(type->bytes), nextByte, type->bytes, false};
    nextByte += type->bytes;
    return place;
}

} // namespace mxformat
