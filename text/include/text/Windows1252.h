#pragma once

#include <optional>
#include <string>

namespace text {

// Texts of mx files are bytes. For people they are Windows-1252; its five unassigned bytes are the
// control characters of the same number, so that each byte has a character.

/// Returns `bytes`, taken as Windows-1252, in UTF-8.
std::string windows1252ToUtf8(const std::string& bytes);

/// A text of UTF-8 as bytes of an mx file.
struct [[nodiscard]] Windows1252Bytes
{
    std::string bytes;                   ///< As far as the first character without a byte.
    std::optional<std::string> rejected; ///< That character, in UTF-8.
};

/// Returns the Windows-1252 bytes of `utf8`. A character from U+0080 to U+009F is the byte of the
/// same number, so that every byte can be written as an escape.
Windows1252Bytes utf8ToWindows1252(const std::string& utf8);

} // namespace text
