#pragma once

#include <string>
#include <vector>

namespace mxtool {

/// Reads bytes in hexadecimal: two digits each; blanks, line ends, commas, colons and 0x may
/// separate them. Throws an `InvalidInput` naming anything else.
std::vector<char> bytesOfHex(const std::string& text);

/// Returns `count` bytes from `begin` as two digits each, separated by blanks. Stops at the end of
/// `bytes`.
std::string hexOfBytes(const std::vector<char>& bytes, std::size_t begin, std::size_t count);

} // namespace mxtool
