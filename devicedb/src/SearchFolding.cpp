#include "SearchFolding.h"

#include <datamodel/Utf8Text.h>

#include <Poco/UTF8Encoding.h>
#include <Poco/Unicode.h>

namespace devices::database {

namespace {

// The base letters of the lower-case letters from U+00DF on, and of Latin Extended-A from U+0100
// on. A dot: the letter has none; "*": two letters.
constexpr const char* baseOfLatin1 = "*aaaaaa*ceeeeiiii.nooooo.ouuuuy.y";
constexpr const char* baseOfExtendedA =
    "aaaaaaccccccccddddeeeeeeeeeegggggggghhhhiiiiiiiiii**jjkk."
    "llllllllllnnnnnnn..oooooo**rrrrrrssssssssttttttuuuuuuuuuuuuwwyyyzzzzzzs";
constexpr int firstOfLatin1 = 0xDF;
constexpr int firstOfExtendedA = 0x100;

const char* twoLettersOf(int character)
{
    switch (character) {
    case 0xDF:
        return "ss";
    case 0xE6:
        return "ae";
    case 0x132:
    case 0x133:
        return "ij";
    default:
        return "oe";
    }
}

bool isCombiningMark(int character)
{
    return character >= 0x300 && character < 0x370;
}

// The base letter of a lower-case letter; 0: it has none.
char baseOf(int character)
{
    char base = '.';
    if (character >= firstOfLatin1 && character < firstOfExtendedA) {
        base = baseOfLatin1[character - firstOfLatin1];
    } else if (character >= firstOfExtendedA && character < 0x180) {
        base = baseOfExtendedA[character - firstOfExtendedA];
    }
    return base == '.' ? '\0' : base;
}

void appendFolded(std::string& folded, int character)
{
    constexpr int micro = 0xB5;
    constexpr int mu = 0x3BC;
    if (isCombiningMark(character)) {
        return;
    }
    const int lower = character == micro ? mu : Poco::Unicode::toLower(character);
    const char base = baseOf(lower);
    if (base == '*') {
        folded += twoLettersOf(lower);
    } else if (base != '\0') {
        folded += base;
    } else {
        datamodel::appendUtf8(folded, static_cast<char32_t>(lower));
    }
}

} // namespace

// Only characters beyond ASCII need the Unicode tables, whose lookup is slow.
std::string foldedForSearch(const std::string& text)
{
    const Poco::UTF8Encoding encoding;
    std::string folded;
    folded.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const char byte = text[at];
        const std::size_t length = datamodel::utf8CharacterLength(text, at);
        if (length <= 1) {
            folded += byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
            ++at;
        } else {
            appendFolded(folded,
                         encoding.convert(reinterpret_cast<const unsigned char*>(&text[at])));
            at += length;
        }
    }
    return folded;
}

} // namespace devices::database
