#include "Base64.h"

namespace devices::parser::mx {

namespace {

constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// Writes the first `count` of the four digits that 24 bits stand for.
void writeDigits(std::uint32_t bits, unsigned count, char* text)
{
    for (unsigned i = 0; i < count; ++i) {
        text[i] = alphabet[bits >> (18 - 6 * i) & 63U];
    }
}

} // namespace

std::string base64(const std::uint8_t* data, std::uint32_t size)
{
    std::string text((std::size_t{size} + 2) / 3 * 4, '=');
    char* out = text.data();
    for (; size >= 3; size -= 3, data += 3, out += 4) {
        writeDigits(std::uint32_t{data[0]} << 16 | std::uint32_t{data[1]} << 8 | data[2], 4, out);
    }
    if (size != 0) {
        const std::uint32_t second = size == 2 ? data[1] : 0;
        writeDigits(std::uint32_t{data[0]} << 16 | second << 8, size + 1, out);
    }
    return text;
}

} // namespace devices::parser::mx
