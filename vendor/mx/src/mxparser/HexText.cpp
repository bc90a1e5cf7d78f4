#include "devices/parser/mx/HexText.h"

#include <text/Hexadecimal.h>

namespace devices::parser::mx {

std::string u32AsHex(std::uint32_t value)
{
    return text::hexOf(value, 8);
}

std::string u16AsHex(std::uint16_t value)
{
    return text::hexOf(value, 4);
}

std::string u8AsHex(std::uint8_t value)
{
    return text::hexOf(value, 2);
}

std::string bufferAsHex(const std::uint8_t* data, unsigned int length)
{
    return text::hexOfBytes(data, length, " ");
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
