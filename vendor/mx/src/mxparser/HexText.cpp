#include "devices/parser/mx/HexText.h"

namespace devices::parser::mx {

namespace {

void appendHex(std::string& text, std::uint32_t value, int digits)
{
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
        text += "0123456789abcdef"[value >> shift & 0xFU];
    }
}

std::string asHex(std::uint32_t value, int digits)
{
    std::string text;
    appendHex(text, value, digits);
    return text;
}

} // namespace

std::string u32AsHex(std::uint32_t value)
{
    return asHex(value, 8);
}

std::string u16AsHex(std::uint16_t value)
{
    return asHex(value, 4);
}

std::string u8AsHex(std::uint8_t value)
{
    return asHex(value, 2);
}

std::string bufferAsHex(const std::uint8_t* data, unsigned int length)
{
    std::string text;
    text.reserve(std::size_t{3} * length);
    for (unsigned int i = 0; i < length; ++i) {
        if (i != 0) {
            text += ' ';
        }
        appendHex(text, data[i], 2);
    }
    return text;
}

std::string bufferAsHex(const std::vector<char>& buffer)
{
    return bufferAsHex(reinterpret_cast<const std::uint8_t*>(buffer.data()),
                       static_cast<unsigned int>(buffer.size()));
}

std::string toFixedWidth(const std::string& text, int width)
{
    std::string padded = text;
    if (width > 0 && text.size() < static_cast<std::size_t>(width)) {
        padded.resize(static_cast<std::size_t>(width), ' ');
    }
    return padded;
}

} // namespace devices::parser::mx
