#pragma once

#include <mxformat/ImageAllocator.h>

namespace mxauthor {

/// The bytes that the channels of one direction use in the process image, as codes of data sizes.
class ImageWalk
{
public:
    /// Adds a channel of this kind and number of bits.
    void pass(std::uint8_t kindNumber, std::uint8_t bitLength);

    /// Returns the next free bit of the byte that is open, 0 when none is.
    std::uint8_t bit() const { return static_cast<std::uint8_t>(image.bit()); }

    /// Returns the image as codes: D, W and B for 4, 2 and 1 bytes.
    std::string codes() const;

private:
    mxformat::ImageAllocator image;
    std::string passed; // codes of the bytes before the open one
};

} // namespace mxauthor
