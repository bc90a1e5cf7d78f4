#include "text/Windows1252.h"

#include "text/Beginning.h"
#include "text/Utf8.h"

#include <Poco/Windows1252Encoding.h>

namespace text {

namespace {

// Poco's table has the unassigned bytes as the control characters that they are here.
std::optional<char> byteOf(char32_t point)
{
    if (point < 0x100) {
        return static_cast<char>(point);
    }
    unsigned char byte = 0;
    const int written = Poco::Windows1252Encoding().convert(static_cast<int>(point), &byte, 1);
    return written == 1 ? std::optional(static_cast<char>(byte)) : std::nullopt;
}

// The character that starts at `position`, with continuation bytes after it that belong to no
// character.
std::string characterAt(const std::string& utf8, std::size_t position)
{
    std::size_t end = position + 1;
    const bool isLead = static_cast<unsigned char>(utf8[position]) >= 0xC0;
    while (isLead && end < utf8.size() && continuesCharacter(utf8[end])) {
        ++end;
    }
    return utf8.substr(position, end - position);
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

Windows1252Bytes utf8ToWindows1252(const std::string& utf8)
{
    Windows1252Bytes result;
    for (std::size_t position = 0; position < utf8.size();) {
        const std::size_t length = datamodel::utf8CharacterLength(utf8, position);
        const auto byte = length == 0 ? std::nullopt : byteOf(codePointAt(utf8, position, length));
        if (!byte) {
            result.rejected = characterAt(utf8, position);
            return result;
        }
        result.bytes += *byte;
        position += length;
    }
    return result;
}

} // namespace text
