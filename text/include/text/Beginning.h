#pragma once

#include <cstddef>
#include <string>

namespace text {

/// Returns whether `byte` is a later byte of a UTF-8 character, not its first.
bool continuesCharacter(char byte);

/// Returns the first `most` bytes of a text, fewer where they would end within a UTF-8 character:
/// as much of a long text as is needed to show its beginning.
std::string beginningOf(const std::string& bytes, std::size_t most);

/// Returns as much of a text of a file as messages show beside other words, and "..." where it is
/// longer: one may have 65,000 bytes.
std::string shortened(const std::string& bytes);

/// Returns `bytes`, or its first 300 bytes and " ..." where it is longer, for a message.
std::string abbreviated(const std::string& bytes);

} // namespace text
