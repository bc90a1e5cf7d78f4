#pragma once

#include <string>
#include <vector>

namespace mxtool {

/// Returns the bytes that `text` spells in hexadecimal: two digits each, with or without blanks,
/// line ends, commas, colons or 0x between them. Throws a `Refusal` naming what else was found.
std::vector<char> bytesOfHex(const std::string& text);

/// Returns the `count` bytes from `begin` as two digits each with a blank between them; those
/// beyond the end of `bytes` are left out.
std::string hexOfBytes(const std::vector<char>& bytes, std::size_t begin, std::size_t count);

} // namespace mxtool
