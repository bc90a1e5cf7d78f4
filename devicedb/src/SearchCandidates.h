#pragma once

#include "SearchLookup.h"
#include "SqlConnection.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace devices::database {

/// The modules that the search index names for what a query looks up, in the order of their keys.
/// They are read as far as they are asked for. Throws `SqlFailure`.
class SearchCandidates
{
public:
    /// A module that may match.
    struct Candidate
    {
        std::uint16_t place;            ///< In its block.
        bool isKnown;                   ///< Whether `match` is certain.
        std::optional<TextClass> match; ///< At best; nothing: it does not match.
    };

    /// A block and its candidates.
    struct Block
    {
        std::string number;
        std::vector<Candidate> candidates;
    };

    /// Both must outlive the object.
    SearchCandidates(SqlConnection& openConnection, const SearchLookup& wanted);

    /// Returns the number of blocks of the index.
    std::size_t blockCount() const { return blocks.size(); }

    /// Returns a block, from 0, which is read if it was not.
    Block& block(std::size_t index);

private:
    void readSome();

    SqlConnection& connection;
    const SearchLookup& lookup;
    std::vector<Block> blocks;
    std::size_t read = 0; // of the blocks
};

} // namespace devices::database
