#include "mxauthor/Utf8.h"

#include "mxauthor/CodePage.h"

#include <datamodel/Utf8Text.h>
#include <devices/parser/mx/HexText.h>

#include <algorithm>

namespace mxauthor {

namespace {

// The first byte from `pos` on that is no part of a character.
std::size_t nextBadByte(const std::string& text, std::size_t pos)
{
    while (pos < text.size()) {
        const std::size_t length = datamodel::utf8CharacterLength(text, pos);
        if (length == 0) {
            return pos;
        }
        pos += length;
    }
    return text.size();
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
