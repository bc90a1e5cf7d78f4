#include "mxauthor/CodePage.h"

#include "mxauthor/Utf8.h"

#include <datamodel/Utf8Text.h>

namespace mxauthor {

namespace {

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
    for (unsigned byte = 0x80; byte < 0xA0; ++byte) {
        if (datamodel::windows1252Character(static_cast<unsigned char>(byte)) == point) {
            return static_cast<char>(byte);
        }
    }
    return std::nullopt;
}

} // namespace

std::string windows1252ToUtf8(const std::string& bytes)
{
    std::string text;
    for (const char byte : bytes) {
        datamodel::appendUtf8(text,
                              datamodel::windows1252Character(static_cast<unsigned char>(byte)));
    }
    return text;
}

std::optional<std::string> utf8ToWindows1252(const std::string& utf8, std::string* rejected)
{
    std::string bytes;
    for (std::size_t pos = 0; pos < utf8.size();) {
        const bool isLead = static_cast<unsigned char>(utf8[pos]) >= 0xC0;
        std::size_t end = pos + 1;
        while (isLead && end < utf8.size() && continuesCharacter(utf8[end])) {
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
