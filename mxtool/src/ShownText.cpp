#include "ShownText.h"

#include <fmt/format.h>

#include <Poco/UTF8Encoding.h>

#include <array>

namespace mxtool {

namespace {

// Windows-1252 differs from Latin-1 in these 32 places; five of them are unassigned there and stand
// for the control character of the same number.
constexpr std::array<char16_t, 32> windows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

unsigned codePoint(unsigned char byte)
{
    return byte >= 0x80 && byte < 0xA0 ? windows1252[byte - 0x80U] : byte;
}

void appendUtf8(std::string& text, unsigned point)
{
    if (point < 0x80) {
        text += static_cast<char>(point);
    } else if (point < 0x800) {
        text += static_cast<char>(0xC0U | point >> 6);
        text += static_cast<char>(0x80U | (point & 0x3FU));
    } else {
        if (point < 0x10000) {
            text += static_cast<char>(0xE0U | point >> 12);
        } else {
            text += static_cast<char>(0xF0U | point >> 18);
            text += static_cast<char>(0x80U | (point >> 12 & 0x3FU));
        }
        text += static_cast<char>(0x80U | (point >> 6 & 0x3FU));
        text += static_cast<char>(0x80U | (point & 0x3FU));
    }
}

// The length of the sequence that a UTF-8 lead byte starts, 0 when it starts none.
std::size_t sequenceLength(unsigned char lead)
{
    if (lead < 0x80) {
        return 1;
    }
    if (lead < 0xC2) {
        return 0;
    }
    if (lead < 0xE0) {
        return 2;
    }
    if (lead < 0xF0) {
        return 3;
    }
    return lead < 0xF5 ? 4 : 0;
}

constexpr std::size_t longestSequence = 4;

bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

bool isUtf8(const std::string& bytes)
{
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
    for (std::size_t pos = 0; pos < bytes.size();) {
        const std::size_t length = sequenceLength(data[pos]);
        if (length == 0 || length > bytes.size() - pos ||
            (length > 1 && !Poco::UTF8Encoding::isLegal(data + pos, static_cast<int>(length)))) {
            return false;
        }
        pos += length;
    }
    return true;
}

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

std::string toUtf8(const std::string& bytes)
{
    if (isUtf8(bytes)) {
        return bytes;
    }
    std::string text;
    for (const char byte : bytes) {
        appendUtf8(text, codePoint(static_cast<unsigned char>(byte)));
    }
    return text;
}

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

std::string beginningOf(const std::string& bytes, std::size_t most)
{
    if (bytes.size() <= most) {
        return bytes;
    }
    std::size_t end = most;
    while (end > 0 && most - end < longestSequence && isContinuation(bytes[end])) {
        --end;
    }
    return bytes.substr(0, end);
}

std::u32string codePoints(const std::string& bytes)
{
    const std::string text = toUtf8(bytes);
    std::u32string points;
    for (std::size_t pos = 0; pos < text.size();) {
        const auto lead = static_cast<unsigned char>(text[pos]);
        const std::size_t length = sequenceLength(lead);
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
