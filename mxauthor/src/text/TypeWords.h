#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mxauthor {

// Datatypes of parameters; kinds of channels have the same names and numbers.

/// Returns the name of a datatype, its number where it is none.
std::string typeWord(std::uint8_t type);

/// Returns the datatype that `word` names.
std::optional<std::uint8_t> typeOfWord(const std::string& word);

const std::vector<std::string>& typeWords();

} // namespace mxauthor
