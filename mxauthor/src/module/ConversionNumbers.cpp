#include "module/ConversionNumbers.h"

#include <array>
#include <charconv>
#include <cstring>

namespace mxauthor {

float floatOf(std::uint32_t bits)
{
    float number = 0;
    std::memcpy(&number, &bits, sizeof number);
    return number;
}

std::string numberText(float number)
{
    std::array<char, 64> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), number);
    return {text.data(), result.ptr};
}

} // namespace mxauthor
