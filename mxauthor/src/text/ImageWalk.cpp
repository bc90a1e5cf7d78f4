#include "ImageWalk.h"

namespace mxauthor {

namespace {

std::string codesOfBytes(std::uint32_t size)
{
    return std::string(size / 4, 'D') + std::string(size % 4 / 2, 'W') + std::string(size % 2, 'B');
}

} // namespace

void ImageWalk::pass(std::uint8_t kindNumber, std::uint8_t bitLength)
{
    const std::uint32_t from = image.byte();
    const auto place = image.take(kindNumber, bitLength);
    if (place && place->isBitField) {
        passed += std::string(image.byte() - from, 'B');
    } else if (place) {
        passed += std::string(place->byte - from, 'B') + codesOfBytes(place->size);
    }
}

std::string ImageWalk::codes() const
{
    return passed + (image.bit() == 0 ? "" : "B");
}

} // namespace mxauthor
