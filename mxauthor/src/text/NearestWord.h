#pragma once

#include <string>
#include <vector>

namespace mxauthor {

/// Returns the one of `known` that is most like `word`, empty when none is much like it.
std::string nearestWord(const std::string& word, const std::vector<std::string>& known);

/// Returns how an unknown word is explained: the nearest known one, and all that are accepted.
std::string acceptedWords(const std::string& word, const std::vector<std::string>& known);

} // namespace mxauthor
