#include "ShownText.h"

#include <fmt/format.h>

namespace mxtool {

namespace {

using datamodel::appendUtf8;

bool isControl(char32_t point)
{
    return point < 0x20 || (point >= 0x7F && point < 0xA0);
}

// Separators of lines and paragraphs, and marks that turn the direction of what follows.
bool turnsTheLine(char32_t point)
{
    return point == 0x061C || point == 0x200E || point == 0x200F ||
           (point >= 0x2028 && point <= 0x202E) || (point >= 0x2066 && point <= 0x2069);
}

} // namespace

std::string forTerminal(const std::string& bytes)
{
    std::string shown;
    for (const char32_t point : codePoints(bytes)) {
        if (isControl(point)) {
            shown += fmt::format("\\x{:02x}", static_cast<unsigned>(point));
        } else if (turnsTheLine(point)) {
            shown += fmt::format("\\u{:04x}", static_cast<unsigned>(point));
        } else {
            appendUtf8(shown, point);
        }
    }
    return shown;
}

std::string harmlessJson(const std::string& json)
{
    std::string text;
    for (const char32_t point : codePoints(json)) {
        if (point != '\n' && (isControl(point) || turnsTheLine(point))) {
            text += fmt::format("\\u{:04x}", static_cast<unsigned>(point));
        } else {
            appendUtf8(text, point);
        }
    }
    return text;
}

std::u32string codePoints(const std::string& bytes)
{
    const std::string text = toUtf8(bytes);
    std::u32string points;
    for (std::size_t pos = 0; pos < text.size();) {
        const auto lead = static_cast<unsigned char>(text[pos]);
        const std::size_t length = datamodel::utf8CharacterLength(text, pos);
        char32_t point = length == 1 ? lead : lead & 0x7FU >> length;
        for (std::size_t i = 1; i < length; ++i) {
            point = point << 6 | (static_cast<unsigned char>(text[pos + i]) & 0x3FU);
        }
        points += point;
        pos += length;
    }
    return points;
}

std::string toUtf8(char32_t point)
{
    std::string text;
    appendUtf8(text, point);
    return text;
}

} // namespace mxtool
