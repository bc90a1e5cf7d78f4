#include "text/FixedDecimals.h"

#include <array>
#include <cassert>
#include <charconv>
#include <limits>

namespace text {

std::string fixedDecimals(float value)
{
    constexpr int decimals = 6;
    constexpr int otherCharacters = 4; // sign, first digit, point and one to spare
    std::array<char, std::numeric_limits<float>::max_exponent10 + decimals + otherCharacters> text;
    const auto written = std::to_chars(text.data(), text.data() + text.size(), value,
                                       std::chars_format::fixed, decimals);
    assert(written.ec == std::errc());
    return {text.data(), written.ptr};
}

} // namespace text
