#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace randomstations {

/// Returns a number below `count`, the same on every machine.
inline std::uint32_t below(std::mt19937& random, std::uint32_t count)
{
    return static_cast<std::uint32_t>(random() % count);
}

/// A record of a channel.
struct Record
{
    std::uint8_t kind = 0; ///< With bit 7 for inputs.
    std::uint8_t bitLength = 0;
    std::uint8_t bitOffset = 0;
    bool isHidden = false; ///< Its name is "-": it takes its place and is no channel.
};

/// A channel with a symbol. Bits count from byte 0 of the image.
struct Place
{
    bool isInput = false;
    std::string symbol;
    std::uint64_t firstBit = 0;
    std::uint64_t bits = 0;
};

/// What a row needs to know of an mx file, read from its bytes without the libraries.
class RowModule
{
public:
    RowModule(std::string name, std::vector<char> bytes);

    const std::string& name() const { return fileName; }
    const std::vector<char>& bytes() const { return content; }
    std::uint64_t size(bool isInput) const { return isInput ? inputSize : outputSize; }

    /// Returns the channels of a module whose data begin at these bytes, in their order.
    std::vector<Place> places(std::uint64_t input, std::uint64_t output) const;

    /// Returns whether it has channels, none of a byte or more.
    bool isOfBits() const;

    /// Returns whether a channel of an image, in a module that begins at byte `first` there, is
    /// elsewhere in the module than in one at byte 0.
    bool isDisplaced(bool isInput, std::uint64_t first) const;

    /// Returns whether a channel of an image is not within the data there.
    bool isOutside(bool isInput, std::uint64_t first) const;

private:
    std::vector<Place> placesOf(bool isInput, std::uint64_t first) const;

    std::string fileName;
    std::vector<char> content;
    std::vector<Record> records;
    std::uint64_t inputSize = 0;
    std::uint64_t outputSize = 0;
};

/// Returns the bytes of an mx file with channels of every kind and data that mostly fit them.
std::vector<char> randomModule(std::mt19937& random);

} // namespace randomstations
