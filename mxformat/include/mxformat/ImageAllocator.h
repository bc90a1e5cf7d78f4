#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace mxformat {

/// Returns the bytes of a channel with the IEC size letter B, W, D or L; 0 for any other.
std::uint8_t bytesOfSizeLetter(char sizeLetter);

/// What a channel takes of a process image.
struct ChannelPlace
{
    char sizeLetter = 'B';  ///< Of IEC 61131-3: X, B, W, D or L.
    std::uint32_t byte = 0; ///< The first.
    std::uint8_t size = 1;  ///< In bytes; 1 for a bit field.
    bool isBitField = false;

    /// Returns the IEC symbol of the channel: IW2, QX0_5, IB3#4,7. The record's `bitLength` and
    /// `bitOffset` count for a bit field alone.
    std::string symbol(bool isInput, std::uint8_t bitLength, std::uint8_t bitOffset) const;
};

/// Gives the channels of one direction their places in the process image, in the order of their
/// records: bits are packed, a channel of whole bytes closes an open byte.
///
/// The alignment is the modules' own: it applies only after an open byte, and does not always give
/// a multiple of the size.
class ImageAllocator
{
public:
    /// The next free place is the bit `bit` of `byte`; 0: no byte is open.
    explicit ImageAllocator(std::uint32_t byte = 0, std::uint32_t bit = 0)
        : nextByte(byte), nextBit(bit)
    {}

    std::uint32_t byte() const { return nextByte; }
    std::uint32_t bit() const { return nextBit; }

    /// Takes the place of a channel with the kind (its number alone) and number of bits that a
    /// record states; nothing for a kind without data.
    [[nodiscard]] std::optional<ChannelPlace> take(std::uint8_t kindNumber, std::uint8_t bitLength);

private:
    ChannelPlace takeBits(std::uint8_t bitLength);
    void passBit();
    void passBits(std::uint8_t count);

    std::uint32_t nextByte;
    std::uint32_t nextBit;
};

} // namespace mxformat
