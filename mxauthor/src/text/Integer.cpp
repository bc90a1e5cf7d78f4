#include "Integer.h"

#include <text/Hexadecimal.h>

#include <charconv>

namespace mxauthor {

namespace {

constexpr std::uint64_t lowestMagnitude = std::uint64_t{1} << 63;

} // namespace

std::optional<Integer> parseInteger(const std::string& text)
{
    Integer number;
    const char* from = text.data();
    const char* const end = from + text.size();
    if (from != end && *from == '-') {
        number.negative = true;
        ++from;
    }
    int base = 10;
    if (end - from > 2 && from[0] == '0' && (from[1] == 'x' || from[1] == 'X')) {
        base = 16;
        from += 2;
    }
    const auto [stop, error] = std::from_chars(from, end, number.magnitude, base);
    const bool tooLow = number.negative && number.magnitude > lowestMagnitude;
    if (error != std::errc() || stop != end || tooLow) {
        return std::nullopt;
    }
    return number;
}

bool isIntegerText(const std::string& text)
{
    const std::string digits = text.substr(text.compare(0, 1, "-") == 0 ? 1 : 0);
    const bool isHexadecimal = digits.compare(0, 2, "0x") == 0 || digits.compare(0, 2, "0X") == 0;
    const char* const accepted = isHexadecimal ? "0123456789abcdefABCDEF" : "0123456789";
    const std::size_t first = isHexadecimal ? 2 : 0;
    return digits.size() > first && digits.find_first_not_of(accepted, first) == std::string::npos;
}

std::string hexText(std::uint64_t value, int digits)
{
    return "0x" + text::hexOf(value, digits);
}

} // namespace mxauthor
