#pragma once

#include "SourceErrors.h"

namespace mxauthor {

// Datatypes of parameters; kinds of channels have the same names and numbers.

/// Returns the name of a datatype, or its number if it has none.
std::string typeWord(std::uint8_t type);

const std::vector<std::string>& typeWords();

/// The word for a channel of a single bit.
extern const std::string bitWord;

/// Returns the words for kinds of channels: those of datatypes and `bitWord`.
const std::vector<std::string>& kindWords();

/// Returns how many bits a channel of the kind that `word` names usually has; 0 for another word.
std::uint8_t bitsOfKindWord(const std::string& word);

/// Returns the datatype or kind that `node` names by one of `words`, or gives as a number up to
/// `limit`.
std::uint8_t readTypeWord(const YAML::Node& node, const std::vector<std::string>& words,
                          std::uint8_t limit, SourceErrors& errors);

} // namespace mxauthor
