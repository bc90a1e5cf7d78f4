#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mxtool {

/// Returns the register that `word` spells: 4500, -1, 0x1194, 10#4500 or 16#1194. Nothing when it
/// is none, a decimal number with leading zeros among them.
[[nodiscard]] std::optional<std::uint16_t> registerOfWord(const std::string& word);

/// Returns the bytes of the Modbus registers that `text` spells: hexadecimal bytes, or registers
/// separated by blanks, line ends, commas or semicolons. Of two readings the one of `size` bytes
/// counts. Throws a `Refusal` with both where both have, and when it is neither.
std::vector<char> bytesOfRegisters(const std::string& text, std::size_t size);

} // namespace mxtool
