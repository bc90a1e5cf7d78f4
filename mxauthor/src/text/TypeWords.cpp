#include "TypeWords.h"

#include <algorithm>

namespace mxauthor {

const std::vector<std::string>& typeWords()
{
    static const std::vector<std::string> words = {"UInt8",  "UInt16", "SInt8",  "SInt16", "Byte",
                                                   "UInt32", "SInt32", "UInt64", "SInt64"};
    return words;
}

std::string typeWord(std::uint8_t type)
{
    const bool named = type >= 1 && type <= typeWords().size();
    return named ? typeWords()[type - 1U] : std::to_string(type);
}

std::optional<std::uint8_t> typeOfWord(const std::string& word)
{
    const auto found = std::find(typeWords().begin(), typeWords().end(), word);
    if (found == typeWords().end()) {
        return std::nullopt;
    }
    return static_cast<std::uint8_t>(found - typeWords().begin() + 1);
}

} // namespace mxauthor
