#include "mxauthor/CodePage.h"

#include <algorithm>
#include <array>

namespace mxauthor {

namespace {

// Windows-1252 differs from Latin-1 in these 32 places; five of them are unassigned there and stand
// for the control character of the same number.
constexpr std::array<char16_t, 32> upperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr unsigned upperControlsStart = 0x80;

unsigned codePoint(unsigned char byte)
{
    const bool differs = byte >= upperControlsStart && byte < 0xA0;
    return differs ? upperControls[byte - upperControlsStart] : byte;
}

// Appends a code point below 0x10000.
void appendUtf8(std::string& text, unsigned point)
{
    if (point < 0x80) {
        text += static_cast<char>(point);
    } else if (point < 0x800) {
        text += static_cast<char>(0xC0U | point >> 6);
        text += static_cast<char>(0x80U | (point & 0x3FU));
    } else {
        text += static_cast<char>(0xE0U | point >> 12);
        text += static_cast<char>(0x80U | (point >> 6 & 0x3FU));
        text += static_cast<char>(0x80U | (point & 0x3FU));
    }
}

bool continues(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

constexpr unsigned noCharacter = 0xFFFF;

// The code point of one whole character below 0x10000; `noCharacter` for others, and for bytes that
// are no UTF-8.
unsigned decoded(const std::string& character)
{
    const auto lead = static_cast<unsigned char>(character[0]);
    const auto bits = [&character](std::size_t i) {
        return static_cast<unsigned char>(character[i]) & 0x3FU;
    };
    if (character.size() == 1 && lead < 0x80) {
        return lead;
    }
    if (character.size() == 2 && lead >= 0xC2 && lead < 0xE0) {
        return (lead & 0x1FU) << 6 | bits(1);
    }
    if (character.size() == 3 && lead >= 0xE0 && lead < 0xF0) {
        const unsigned point = (lead & 0xFU) << 12 | bits(1) << 6 | bits(2);
        return point < 0x800 ? noCharacter : point;
    }
    return noCharacter;
}

std::optional<char> byteOf(unsigned point)
{
    if (point < 0x100) {
        return static_cast<char>(point);
    }
    const auto* const found = std::find(upperControls.begin(), upperControls.end(), point);
    if (found == upperControls.end()) {
        return std::nullopt;
    }
    return static_cast<char>(upperControlsStart +
                             static_cast<unsigned>(found - upperControls.begin()));
}

} // namespace

std::string windows1252ToUtf8(const std::string& bytes)
{
    std::string text;
    for (const char byte : bytes) {
        appendUtf8(text, codePoint(static_cast<unsigned char>(byte)));
    }
    return text;
}

std::optional<std::string> utf8ToWindows1252(const std::string& utf8, std::string* rejected)
{
    std::string bytes;
    for (std::size_t pos = 0; pos < utf8.size();) {
        const bool isLead = static_cast<unsigned char>(utf8[pos]) >= 0xC0;
        std::size_t end = pos + 1;
        while (isLead && end < utf8.size() && continues(utf8[end])) {
            ++end;
        }
        const std::string character = utf8.substr(pos, end - pos);
        const std::optional<char> byte = byteOf(decoded(character));
        if (!byte) {
            *rejected = character;
            return std::nullopt;
        }
        bytes += *byte;
        pos = end;
    }
    return bytes;
}

} // namespace mxauthor
