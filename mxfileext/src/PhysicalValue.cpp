#include "PhysicalValue.h"

#include <array>
#include <charconv>
#include <limits>

namespace mxfileext {

Conversion conversionOf(std::uint8_t module, const Parameter& parameter)
{
    return moduleData(module).conversion(parameter.record.conversion);
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
