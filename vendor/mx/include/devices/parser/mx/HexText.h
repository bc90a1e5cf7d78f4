#pragma once

#include "devices/parser/mx/ParserMxApi.h"

#include <cstdint>
#include <string>
#include <vector>

namespace devices::parser::mx {

PARSER_MX_API std::string u32AsHex(std::uint32_t value); ///< Eight lower-case digits, no prefix.
PARSER_MX_API std::string u16AsHex(std::uint16_t value); ///< Four lower-case digits, no prefix.
PARSER_MX_API std::string u8AsHex(std::uint8_t value);   ///< Two lower-case digits, no prefix.

/// Returns each of the `length` bytes at `data` as two lower-case digits, separated by one blank;
/// for no bytes the empty text.
PARSER_MX_API std::string bufferAsHex(const std::uint8_t* data, unsigned int length);

/// Returns each byte of `buffer` in the same form.
PARSER_MX_API std::string bufferAsHex(const std::vector<char>& buffer);

/// Returns `text` padded on the right with blanks to `width` bytes; a longer text is never cut.
PARSER_MX_API std::string toFixedWidth(const std::string& text, int width);

} // namespace devices::parser::mx
