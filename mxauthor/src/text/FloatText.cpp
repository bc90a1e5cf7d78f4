#include "FloatText.h"

#include <devices/parser/mx/HexText.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

namespace mxauthor {

namespace {

const std::string bitsPrefix = "bits ";

std::optional<std::uint32_t> parseBits(const std::string& digits)
{
    std::uint32_t bits = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, bits, 16);
    return error == std::errc() && stop == end ? std::optional(bits) : std::nullopt;
}

} // namespace

std::string floatText(std::uint32_t bits)
{
    float number = 0;
    std::memcpy(&number, &bits, sizeof number);
    if (!std::isfinite(number)) {
        return bitsPrefix + devices::parser::mx::u32AsHex(bits);
    }
    std::array<char, 32> text;
    const auto result = std::to_chars(text.data(), text.data() + text.size(), number);
    return {text.data(), result.ptr};
}

std::optional<std::uint32_t> parseFloat(const std::string& text)
{
    if (text.compare(0, bitsPrefix.size(), bitsPrefix) == 0) {
        return parseBits(text.substr(bitsPrefix.size()));
    }
    float number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end || !std::isfinite(number)) {
        return std::nullopt;
    }
    std::uint32_t bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

} // namespace mxauthor
