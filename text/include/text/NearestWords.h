#pragma once

#include <string>
#include <vector>

namespace text {

/// Returns up to three of `candidates` that `word` was most likely meant to be, best first. Case is
/// ignored; "+-" and "+/-" are the same as "±", "u" is the same as "µ".
std::vector<std::string> nearestWords(const std::string& word,
                                      const std::vector<std::string>& candidates);

/// Returns ", did you mean "A" or "B"?" for the nearest words, empty without any.
std::string didYouMean(const std::string& word, const std::vector<std::string>& candidates);

/// Returns the hint for an unknown word: the nearest of `accepted`, and all of them.
std::string acceptedWords(const std::string& word, const std::vector<std::string>& accepted);

} // namespace text
