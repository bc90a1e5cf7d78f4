#include "mxauthor/Utf8.h"

#include "mxauthor/CodePage.h"

#include <devices/parser/mx/HexText.h>

#include <algorithm>

namespace mxauthor {

namespace {

unsigned byteAt(const std::string& text, std::size_t pos)
{
    return pos < text.size() ? static_cast<unsigned char>(text[pos]) : 0;
}

// How many bytes the character with this lead byte has, 0 when there is none.
std::size_t lengthOf(unsigned lead)
{
    if (lead < 0x80) {
        return 1;
    }
    if (lead < 0xC2 || lead > 0xF4) {
        return 0;
    }
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

// Longer forms than necessary, halves of surrogate pairs and points above U+10FFFF are none.
bool mayFollow(unsigned lead, unsigned second)
{
    const bool tooLong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool noPoint = (lead == 0xED && second >= 0xA0) || (lead == 0xF4 && second >= 0x90);
    return !tooLong && !noPoint;
}

// The length of the character at `pos`, 0 where the byte begins none.
std::size_t characterAt(const std::string& text, std::size_t pos)
{
    const unsigned lead = byteAt(text, pos);
    const std::size_t length = lengthOf(lead);
    if (length > 1 && !mayFollow(lead, byteAt(text, pos + 1))) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if (pos + i >= text.size() || !continuesCharacter(text[pos + i])) {
            return 0;
        }
    }
    return length;
}

// The first byte from `pos` on that is no part of a character.
std::size_t nextBadByte(const std::string& text, std::size_t pos)
{
    while (pos < text.size() && characterAt(text, pos) != 0) {
        pos += characterAt(text, pos);
    }
    return std::min(pos, text.size());
}

std::string describeByte(const std::string& text, std::size_t pos)
{
    if (pos == 0 && (text.compare(0, 2, "\xFF\xFE") == 0 || text.compare(0, 2, "\xFE\xFF") == 0)) {
        return "this text is UTF-16, expected UTF-8: save it as UTF-8";
    }
    std::size_t count = 0;
    for (std::size_t bad = pos; bad < text.size(); bad = nextBadByte(text, bad + 1)) {
        ++count;
    }
    const auto byte = static_cast<std::uint8_t>(text[pos]);
    return "the byte 0x" + devices::parser::mx::u8AsHex(byte) +
           " is not UTF-8, which is expected here (in Windows-1252 it is \"" +
           windows1252ToUtf8(text.substr(pos, 1)) + "\"): save the text as UTF-8" +
           (count == 1 ? "" : "; it has " + std::to_string(count) + " such bytes");
}

} // namespace

bool continuesCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

std::optional<SourceError> findNonUtf8(const std::string& text)
{
    const std::size_t bad = nextBadByte(text, 0);
    if (bad >= text.size()) {
        return std::nullopt;
    }
    SourceError error;
    const std::string before = text.substr(0, bad);
    error.lineStart = before.rfind('\n') + 1; // 0 where there is none
    error.line += static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
    error.column += static_cast<std::size_t>(
        std::count_if(before.begin() + static_cast<std::ptrdiff_t>(error.lineStart), before.end(),
                      [](char c) { return !continuesCharacter(c); }));
    error.text = describeByte(text, bad);
    return error;
}

std::string repairedUtf8(const std::string& text)
{
    std::string repaired;
    for (std::size_t pos = 0; pos < text.size();) {
        const std::size_t bad = nextBadByte(text, pos);
        repaired += text.substr(pos, bad - pos);
        repaired += bad < text.size() ? windows1252ToUtf8(text.substr(bad, 1)) : "";
        pos = bad + 1;
    }
    return repaired;
}

} // namespace mxauthor
