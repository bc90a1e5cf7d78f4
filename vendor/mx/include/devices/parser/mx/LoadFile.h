#pragma once

#include "devices/parser/mx/ParserMxApi.h"

#include <string>
#include <vector>

namespace devices::parser::mx {

/// Fills `buffer` with the bytes of the file at `path` followed by one byte 0xFF.
///
/// Readers of mx data rely on the content length of group 0, not on the size of the buffer; whoever
/// uses the size sees one byte more than the file has. Throws `std::runtime_error`
/// "Cannot open file: " and the path when the file cannot be opened or read; `buffer` is empty
/// then.
PARSER_MX_API void loadFile(const std::string& path, std::vector<char>& buffer);

} // namespace devices::parser::mx
