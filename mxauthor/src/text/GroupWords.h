#pragma once

#include <mxformat/Groups.h>

#include <optional>
#include <string>
#include <vector>

namespace mxauthor {

/// Means the next raw group in a stated order.
extern const std::string rawWord;

/// Returns the groups that have a form of their own, in the order in which files usually have them.
const std::vector<std::uint16_t>& usualOrder();

/// Returns the word of the text form for such a group.
std::string groupWord(std::uint16_t id);

/// Returns the group that `word` names, empty for another word.
[[nodiscard]] std::optional<std::uint16_t> groupOfWord(const std::string& word);

/// Returns all words, in the usual order.
std::vector<std::string> groupWords();

} // namespace mxauthor
