#pragma once

#include <cstddef>
#include <string>

namespace text {

/// An invisible character of a text in UTF-8 that looks like a blank or like nothing at all.
struct InvisibleCharacter
{
    const char* bytes;
    const char* name; ///< Such as "U+00A0 (no-break space)".
};

/// Returns the character that starts at byte `pos` of `text`, null if it is not one of these.
const InvisibleCharacter* invisibleAt(const std::string& text, std::size_t pos);

/// Returns `text` with each of these characters replaced by its number in angle brackets; the name
/// of the first one is added at the end.
std::string withInvisibleNamed(const std::string& text);

} // namespace text
