#include "text/Hexadecimal.h"

#include <algorithm>
#include <cstring>

namespace text {

// Poco's HexBinaryEncoder needs a stream for each text: too slow for log lines.
void appendHex(std::string& text, std::uint64_t value, int digits)
{
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
        text += "0123456789abcdef"[value >> shift & 0xFU];
    }
}

std::string hexOf(std::uint64_t value, int digits)
{
    std::string text;
    appendHex(text, value, digits);
    return text;
}

std::string hexOfBytes(const void* data, std::size_t count, const char* between)
{
    const auto* const bytes = static_cast<const std::uint8_t*>(data);
    std::string text;
    text.reserve((2 + std::strlen(between)) * count);
    for (std::size_t i = 0; i < count; ++i) {
        text += i == 0 ? "" : between;
        appendHex(text, bytes[i], 2);
    }
    return text;
}

std::string hexOfBytes(const std::vector<char>& bytes, std::size_t begin, std::size_t count)
{
    const std::size_t first = std::min(bytes.size(), begin);
    return hexOfBytes(bytes.data() + first, std::min(bytes.size() - first, count), " ");
}

std::string toHex(const std::vector<std::uint8_t>& bytes)
{
    return hexOfBytes(bytes.data(), bytes.size(), "");
}

// Poco's HexBinaryDecoder would continue after an unpaired digit.
std::optional<std::vector<std::uint8_t>> fromHex(const std::string& text)
{
    std::vector<std::uint8_t> bytes;
    bool isHigh = true;
    for (const char c : text) {
        if (c == ' ' || c == '\n' || c == '\t' || c == '\r') {
            continue;
        }
        const auto digit = hexDigit(c);
        if (!digit) {
            return std::nullopt;
        }
        if (isHigh) {
            bytes.push_back(0);
        }
        bytes.back() = static_cast<std::uint8_t>(bytes.back() * 16U + *digit);
        isHigh = !isHigh;
    }
    return isHigh ? std::optional(bytes) : std::nullopt;
}

std::optional<unsigned> hexDigit(char digit)
{
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    const char lower = static_cast<char>(digit | 0x20);
    if (lower >= 'a' && lower <= 'f') {
        return lower - 'a' + 10;
    }
    return std::nullopt;
}

} // namespace text
