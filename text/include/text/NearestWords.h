#pragma once

#include <string>
#include <vector>

namespace text {

/// Returns the at most three of `candidates` that `word` was most likely meant to be, best first;
/// none where nothing is near. Upper and lower case are the same letter; "+-" and "+/-" are the
/// same as "±", "u" is the same as "µ".
std::vector<std::string> nearestWords(const std::string& word,
                                      const std::vector<std::string>& candidates);

/// Returns ", did you mean "A" or "B"?" for the nearest words, empty without any.
std::string didYouMean(const std::string& word, const std::vector<std::string>& candidates);

/// Returns how an unknown word is explained: the nearest of `accepted`, and all of them.
std::string acceptedWords(const std::string& word, const std::vector<std::string>& accepted);

} // namespace text
