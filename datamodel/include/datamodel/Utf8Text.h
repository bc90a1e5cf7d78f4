#pragma once

/// Texts of the data model as UTF-8.
///
/// A text of an mx file is bytes, with no code page. These functions need no library: a host that
/// loads the parser at run time has them too. Nothing depends on the locale.

#include <cstddef>
#include <string>

namespace datamodel {

/// Returns the length in bytes of the UTF-8 character that starts at byte `position` of `bytes`,
/// which is there; 0 where none does.
inline std::size_t utf8CharacterLength(const std::string& bytes, std::size_t position)
{
    const auto byte = [&bytes, position](std::size_t i) {
        return static_cast<unsigned char>(bytes[position + i]);
    };
    const unsigned lead = byte(0);
    if (lead < 0x80) {
        return 1;
    }
    if (lead < 0xC2 || lead > 0xF4) {
        return 0;
    }
    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (length > bytes.size() - position) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0U) != 0x80U) {
            return 0;
        }
    }
    // The second byte shows overlong forms, surrogates and what lies above U+10FFFF.
    const unsigned second = byte(1);
    const bool isCharacter = lead == 0xE0   ? second >= 0xA0
                             : lead == 0xED ? second < 0xA0
                             : lead == 0xF0 ? second >= 0x90
                                            : lead != 0xF4 || second < 0x90;
    return isCharacter ? length : 0;
}

/// Returns whether `bytes` are valid UTF-8.
inline bool isUtf8(const std::string& bytes)
{
    for (std::size_t position = 0; position < bytes.size();) {
        const std::size_t length = utf8CharacterLength(bytes, position);
        if (length == 0) {
            return false;
        }
        position += length;
    }
    return true;
}

/// Appends `character`, at most U+10FFFF, to `text` as UTF-8.
inline void appendUtf8(std::string& text, char32_t character)
{
    const auto append = [&text](char32_t byte) { text += static_cast<char>(byte); };
    const auto appendSixBits = [&append, character](unsigned shift) {
        append(0x80U | (character >> shift & 0x3FU));
    };
    if (character < 0x80) {
        append(character);
    } else if (character < 0x800) {
        append(0xC0U | character >> 6);
        appendSixBits(0);
    } else if (character < 0x10000) {
        append(0xE0U | character >> 12);
        appendSixBits(6);
        appendSixBits(0);
    } else {
        append(0xF0U | character >> 18);
        appendSixBits(12);
        appendSixBits(6);
        appendSixBits(0);
    }
}

/// Returns the character that `byte` is in Windows-1252. The five bytes that are unassigned there
/// are the control characters of the same number: each byte has a character of its own.
inline char32_t windows1252Character(unsigned char byte)
{
    // Windows-1252 differs from Latin-1 in these 32 places.
    constexpr char16_t from80to9F[] = {
        0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
    const bool differs = byte >= 0x80 && byte < 0xA0;
    return differs ? from80to9F[byte - 0x80U] : byte;
}

/// Returns a text of the data model as valid UTF-8: its bytes as they are where they are valid
/// UTF-8, otherwise read as Windows-1252. `mxtool` shows texts so.
inline std::string toUtf8(const std::string& bytes)
{
    if (isUtf8(bytes)) {
        return bytes;
    }
    std::string text;
    for (const char byte : bytes) {
        appendUtf8(text, windows1252Character(static_cast<unsigned char>(byte)));
    }
    return text;
}

} // namespace datamodel
