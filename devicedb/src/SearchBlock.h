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

/// A module of a block that has a part.
struct BlockMember
{
    std::size_t place; ///< In the block, from 0.
    TextClass best;    ///< The best class of texts that has the part.
};

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

/// Returns the members that `stored` holds, ordered by place. Throws a `SqlFailure` if it holds
/// anything else: another program may have stored it.
std::vector<BlockMember> membersOf(const std::string& stored);

} // namespace devices::database
