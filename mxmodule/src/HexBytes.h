#pragma once

#include <string>
#include <vector>

namespace mxmodule {

/// Reads bytes in hexadecimal: two digits each; blanks, line ends, commas, colons and 0x may
/// separate them. Throws an `InvalidInput` naming anything else.
std::vector<char> bytesOfHex(const std::string& text);

} // namespace mxmodule
