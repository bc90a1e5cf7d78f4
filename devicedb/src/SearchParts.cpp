#include "SearchParts.h"

#include <datamodel/Utf8Text.h>

#include <algorithm>
#include <sstream>

namespace devices::database {

namespace {

constexpr unsigned bitsOfCharacter = 21; // up to U+10FFFF
constexpr std::size_t longestPart = 3;   // characters, which fit into 64 bits

// The characters of `text`, which is UTF-8.
std::vector<char32_t> charactersOf(const std::string& text)
{
    std::vector<char32_t> characters;
    characters.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const auto lead = static_cast<unsigned char>(text[at]);
        const std::size_t length =
            std::max<std::size_t>(datamodel::utf8CharacterLength(text, at), 1);
        char32_t character = length == 1 ? lead : lead & (0xFFU >> (length + 1));
        for (std::size_t i = 1; i < length; ++i) {
            character = character << 6 | (static_cast<unsigned char>(text[at + i]) & 0x3FU);
        }
        characters.push_back(character);
        at += length;
    }
    return characters;
}

std::string bytesOf(std::vector<char32_t>::const_iterator begin,
                    std::vector<char32_t>::const_iterator end)
{
    std::string bytes;
    std::for_each(begin, end, [&](char32_t one) { datamodel::appendUtf8(bytes, one); });
    return bytes;
}

} // namespace

std::vector<TextPart> partsOf(const std::string& text)
{
    std::vector<TextPart> parts;
    parts.reserve(longestPart * text.size());
    constexpr TextPart ofTwo = (TextPart{1} << 2 * bitsOfCharacter) - 1;
    TextPart last = 0; // the characters before, and this one in the lowest bits
    std::size_t inLine = 0;
    for (const char32_t character : charactersOf(text)) {
        if (character == U'\n') {
            inLine = 0;
            continue;
        }
        last = (inLine == 0 ? 0 : (last & ofTwo) << bitsOfCharacter) | character;
        inLine = std::min(inLine + 1, longestPart);
        for (std::size_t length = 1; length <= inLine; ++length) {
            parts.push_back(last & ((TextPart{1} << length * bitsOfCharacter) - 1));
        }
    }
    return parts;
}

std::string bytesOfPart(TextPart part)
{
    std::string bytes;
    for (std::size_t i = longestPart; i-- > 0;) {
        const auto character = static_cast<char32_t>(part >> i * bitsOfCharacter & 0x1FFFFFU);
        if (character != 0) {
            datamodel::appendUtf8(bytes, character);
        }
    }
    return bytes;
}

namespace {

void addPartsCovering(const std::string& line, std::vector<std::string>& parts)
{
    const std::vector<char32_t> characters = charactersOf(line);
    const auto add = [&](std::size_t at, std::size_t length) {
        const auto begin = characters.begin() + static_cast<std::ptrdiff_t>(at);
        parts.push_back(bytesOf(begin, begin + static_cast<std::ptrdiff_t>(length)));
    };
    if (characters.size() <= longestPart) {
        if (!characters.empty()) {
            add(0, characters.size());
        }
        return;
    }
    for (std::size_t at = 0; at + longestPart < characters.size(); at += longestPart - 1) {
        add(at, longestPart);
    }
    add(characters.size() - longestPart, longestPart);
}

} // namespace

std::vector<std::string> partsCovering(const std::string& text)
{
    std::vector<std::string> parts;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        addPartsCovering(line, parts);
    }
    return parts;
}

} // namespace devices::database
