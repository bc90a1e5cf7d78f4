#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mxmodule {

/// Reads a register: 4500, -1, 0x1194, 10#4500 or 16#1194. Returns nothing for anything else, such
/// as a decimal number with leading zeros.
[[nodiscard]] std::optional<std::uint16_t> registerOfWord(const std::string& word);

/// Reads Modbus registers as bytes: `text` contains hexadecimal bytes, or registers separated by
/// blanks, line ends, commas or semicolons. If both readings are possible, the one of `size` bytes
/// counts. Throws an `InvalidInput` if both have that size, and if neither reading is possible.
std::vector<char> bytesOfRegisters(const std::string& text, std::size_t size);

} // namespace mxmodule
