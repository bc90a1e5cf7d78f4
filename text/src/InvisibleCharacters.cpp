#include "text/InvisibleCharacters.h"

#include <array>
#include <cstring>

namespace text {

namespace {

constexpr std::array<InvisibleCharacter, 13> invisibleCharacters = {
    {{"\xC2\xA0", "U+00A0 (no-break space)"},
     {"\xC2\xAD", "U+00AD (soft hyphen)"},
     {"\xE2\x80\x82", "U+2002 (en space)"},
     {"\xE2\x80\x83", "U+2003 (em space)"},
     {"\xE2\x80\x89", "U+2009 (thin space)"},
     {"\xE2\x80\x8B", "U+200B (zero width space)"},
     {"\xE2\x80\x8E", "U+200E (left-to-right mark)"},
     {"\xE2\x80\x8F", "U+200F (right-to-left mark)"},
     {"\xE2\x80\xA8", "U+2028 (line separator)"},
     {"\xE2\x80\xAF", "U+202F (narrow no-break space)"},
     {"\xE2\x81\xA0", "U+2060 (word joiner)"},
     {"\xE3\x80\x80", "U+3000 (ideographic space)"},
     {"\xEF\xBB\xBF", "U+FEFF (byte order mark)"}}};

constexpr std::size_t numberLength = 6; // "U+00A0"

} // namespace

const InvisibleCharacter* invisibleAt(const std::string& text, std::size_t pos)
{
    for (const InvisibleCharacter& character : invisibleCharacters) {
        if (text.compare(pos, std::strlen(character.bytes), character.bytes) == 0) {
            return &character;
        }
    }
    return nullptr;
}

std::string withInvisibleNamed(const std::string& text)
{
    std::string shown;
    const InvisibleCharacter* first = nullptr;
    for (std::size_t pos = 0; pos < text.size(); ++pos) {
        const InvisibleCharacter* const character = invisibleAt(text, pos);
        if (character == nullptr) {
            shown += text[pos];
            continue;
        }
        shown += "<" + std::string(character->name, numberLength) + ">";
        pos += std::strlen(character->bytes) - 1;
        first = first == nullptr ? character : first;
    }
    return first == nullptr ? text : shown + "; the text holds " + first->name;
}

} // namespace text
