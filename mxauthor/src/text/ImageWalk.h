#pragma once

#include <cstdint>
#include <string>

namespace mxauthor {

/// The addresses that channels get in the process image of one direction, in the order of their
/// records: bits are packed, a channel of whole bytes closes an open byte.
class ImageWalk
{
public:
    /// Passes a channel of this kind and number of bits.
    void pass(std::uint8_t kind, std::uint8_t bitLength);

    /// Returns the next free bit of the byte that is open, 0 when none is.
    std::uint8_t bit() const { return static_cast<std::uint8_t>(openBits); }

    /// Returns the image as datatype codes: D, W and B for 4, 2 and 1 bytes.
    std::string codes() const;

private:
    void passBits(std::uint32_t bits);
    void passBytes(std::uint32_t start, const char* what, std::uint32_t size);

    std::uint32_t byte = 0;
    std::uint32_t openBits = 0;
    std::string passed; // codes of the bytes before `byte`
};

} // namespace mxauthor
