#include "TypeWords.h"

#include "Section.h"
#include "mxauthor/NearestWords.h"

#include <algorithm>
#include <map>

namespace mxauthor {

namespace {

constexpr std::uint8_t bitField = 5;

} // namespace

const std::string bitWord = "Bit";

const std::vector<std::string>& typeWords()
{
    static const std::vector<std::string> words = {"UInt8",  "UInt16", "SInt8",  "SInt16", "Byte",
                                                   "UInt32", "SInt32", "UInt64", "SInt64"};
    return words;
}

const std::vector<std::string>& kindWords()
{
    static const std::vector<std::string> words = [] {
        std::vector<std::string> all = typeWords();
        all.push_back(bitWord);
        return all;
    }();
    return words;
}

std::string typeWord(std::uint8_t type)
{
    const bool named = type >= 1 && type <= typeWords().size();
    return named ? typeWords()[type - 1U] : std::to_string(type);
}

std::uint8_t bitsOfKindWord(const std::string& word)
{
    static const std::map<std::string, std::uint8_t> bits = {
        {"UInt8", 8},   {"UInt16", 16}, {"SInt8", 8},   {"SInt16", 16}, {"Byte", 8},
        {"UInt32", 32}, {"SInt32", 32}, {"UInt64", 64}, {"SInt64", 64}, {"Bit", 1}};
    const auto found = bits.find(word);
    return found == bits.end() ? std::uint8_t{0} : found->second;
}

std::uint8_t readTypeWord(const YAML::Node& node, const std::vector<std::string>& words,
                          std::uint8_t limit, SourceErrors& errors)
{
    const auto word = readScalar(node, errors);
    if (!word) {
        return 0;
    }
    if (*word == bitWord && &words == &kindWords()) {
        return bitField;
    }
    const auto found = std::find(typeWords().begin(), typeWords().end(), *word);
    if (found != typeWords().end()) {
        return static_cast<std::uint8_t>(found - typeWords().begin() + 1);
    }
    if (parseInteger(*word)) {
        return static_cast<std::uint8_t>(readNumber(node, limit, errors).value_or(0));
    }
    errors.add(node, "unknown type \"" + *word + "\"" + acceptedWords(*word, words));
    return 0;
}

} // namespace mxauthor
