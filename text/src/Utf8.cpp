#include "text/Utf8.h"

#include "text/Beginning.h"
#include "text/Windows1252.h"

#include <algorithm>

namespace text {

std::string toUtf8(char32_t point)
{
    std::string text;
    datamodel::appendUtf8(text, point);
    return text;
}

char32_t codePointAt(const std::string& bytes, std::size_t position, std::size_t length)
{
    const auto lead = static_cast<unsigned char>(bytes[position]);
    char32_t point = length == 1 ? lead : lead & 0x7FU >> length;
    for (std::size_t i = 1; i < length; ++i) {
        point = point << 6 | (static_cast<unsigned char>(bytes[position + i]) & 0x3FU);
    }
    return point;
}

std::u32string codePoints(const std::string& bytes)
{
    const std::string text = toUtf8(bytes);
    std::u32string points;
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t length = datamodel::utf8CharacterLength(text, position);
        points += codePointAt(text, position, length);
        position += length;
    }
    return points;
}

std::size_t characterCount(std::string_view utf8)
{
    return utf8.size() -
           static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), continuesCharacter));
}

std::size_t nextNonUtf8(const std::string& bytes, std::size_t position)
{
    while (position < bytes.size()) {
        const std::size_t length = datamodel::utf8CharacterLength(bytes, position);
        if (length == 0) {
            return position;
        }
        position += length;
    }
    return bytes.size();
}

std::string repairedUtf8(const std::string& bytes)
{
    std::string repaired;
    for (std::size_t position = 0; position < bytes.size();) {
        const std::size_t bad = nextNonUtf8(bytes, position);
        repaired += bytes.substr(position, bad - position);
        repaired += bad < bytes.size() ? windows1252ToUtf8(bytes.substr(bad, 1)) : "";
        position = bad + 1;
    }
    return repaired;
}

bool isUtf16(std::string_view content)
{
    const std::string_view mark = content.substr(0, 2);
    return mark == "\xFF\xFE" || mark == "\xFE\xFF";
}

} // namespace text
