#pragma once

#include "SearchParts.h"
#include "SearchTexts.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace devices::database {

/// A block of the search index: up to `mostMembers` modules that follow each other in the order of
/// their keys. A part of the index is a short text, or a fact, with the modules of the block that
/// have it.
constexpr std::size_t mostMembers = 1024;

/// Collects the parts of the modules of one block.
class BlockParts
{
public:
    /// Adds the next module.
    void add(const SearchTexts& texts, const std::vector<std::string>& facts);

    /// Returns the parts, each with its members as they are stored, ordered bytewise by part.
    std::vector<std::pair<std::string, std::string>> stored() const;

private:
    using Members = std::vector<std::uint16_t>;

    std::unordered_map<TextPart, Members> ofTexts;
    std::unordered_map<std::string, Members> ofFacts;
    std::size_t count = 0;
};

/// Throws a `SqlFailure` if `stored` is not of pairs of bytes: another program may have stored it.
void requirePairs(const std::string& stored);

/// Calls `take(place, best)` for each member that `stored` holds, in the order of their places: the
/// place of a module in the block, from 0, and the best class of its texts that has the part.
template <typename Take>
void forEachMember(const std::string& stored, Take take)
{
    requirePairs(stored);
    for (std::size_t at = 0; at < stored.size(); at += 2) {
        const unsigned number = static_cast<unsigned char>(stored[at]) * 256U +
                                static_cast<unsigned char>(stored[at + 1]);
        const std::size_t place = number / textClassCount;
        if (place < mostMembers) {
            take(place, static_cast<TextClass>(number % textClassCount));
        }
    }
}

} // namespace devices::database
