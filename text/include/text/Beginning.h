#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace text {

/// Returns whether `byte` is a later byte of a UTF-8 character, not its first.
bool continuesCharacter(char byte);

/// Returns the first `most` bytes of a text, fewer if they would end within a UTF-8 character.
std::string beginningOf(const std::string& bytes, std::size_t most);

/// Returns a text of a file for messages, shortened and with "..." if it is long: it may have
/// 65,000 bytes.
std::string shortened(const std::string& bytes);

/// Returns `bytes`, or its first 300 bytes and " ..." if it is longer, for a message.
std::string abbreviated(const std::string& bytes);

/// Returns the first `most` of `items`, with `separator` between them, and how many more there are:
/// "a, b and 3 more" where `beforeRest` is a blank.
std::string beginningOfList(const std::vector<std::string>& items, std::size_t most,
                            const std::string& separator, const std::string& beforeRest);

} // namespace text
