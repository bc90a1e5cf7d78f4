#pragma once

#include "devices/database/ModuleContent.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace devices::database {

/// What a text of a module names; the better matches first.
enum class TextClass : std::uint8_t
{
    Names, ///< The module: label and order code.
    Channels,
    Parameters,
    Options
};

constexpr std::size_t textClassCount = 4;

/// The texts of a module in which words are looked for, folded, by `TextClass`; a line for each.
using SearchTexts = std::array<std::string, textClassCount>;

/// Returns the search texts of a module.
SearchTexts searchTextsOf(const ModuleContent& content);

/// Returns how well a module with `texts` matches the folded `words`: the best class of each word,
/// and of these the poorest. Nothing if a word is in none.
std::optional<TextClass> matchOf(const SearchTexts& texts, const std::vector<std::string>& words);

} // namespace devices::database
