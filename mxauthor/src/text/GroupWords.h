#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mxauthor {

constexpr std::uint16_t headerGroup = 0x0000;
constexpr std::uint16_t moduleGroup = 0x0001;
constexpr std::uint16_t blockGroup = 0x0010;
constexpr std::uint16_t dataSizesGroup = 0x0011;
constexpr std::uint16_t catalogueGroup = 0x0020;
constexpr std::uint16_t componentGroup = 0x0040;
constexpr std::uint16_t parametersGroup = 0x20C0;
constexpr std::uint16_t optionListsGroup = 0x20C1;
constexpr std::uint16_t conversionsGroup = 0x20C2;
constexpr std::uint16_t channelsGroup = 0x20D0;
constexpr std::uint16_t textsGroup = 0x20D3;
constexpr std::uint16_t channelNamesGroup = 0x20D7;
constexpr std::uint16_t extensionGroup = 0x20F0;
constexpr std::uint16_t imageGroup = 0x20F1;

/// Stands for the next raw group in a stated order.
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
