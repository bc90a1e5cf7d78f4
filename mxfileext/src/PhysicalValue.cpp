#include "PhysicalValue.h"

#include <devices/parser/mx/ByteReaders.h>

#include <array>
#include <charconv>
#include <limits>

namespace mxfileext {

namespace {

using devices::parser::mx::readU8;

constexpr std::uint8_t convertedFlag = 0x04;

} // namespace

bool isConverted(const std::uint8_t* record)
{
    return (readU8(record + 5) & convertedFlag) != 0;
}

Conversion conversionOf(std::uint8_t module, const std::uint8_t* record)
{
    return moduleData(module).conversion(readU8(record + 6));
}

std::string physicalText(float value)
{
    constexpr int decimals = 6;
    constexpr int otherCharacters = 4; // sign, first digit, point and one to spare
    std::array<char, std::numeric_limits<float>::max_exponent10 + decimals + otherCharacters> text;
    const auto written = std::to_chars(text.data(), text.data() + text.size(), value,
                                       std::chars_format::fixed, decimals);
    return {text.data(), written.ptr};
}

} // namespace mxfileext
