#pragma once

#include <devices/parser/mx/Parser.h>

#include <cstdint>
#include <string>
#include <vector>

namespace mxtool {

/// The groups of an mx file in file order, repeated ones included.
struct GroupListing
{
    std::vector<devices::parser::mx::GroupPlace> groups;
    std::uint32_t framedSize = 0; ///< Where the last group ends, in bytes from the start.
    std::string failure;          ///< The container reader's message; empty when the framing holds.
};

/// Lists the groups of the mx data `bytes`. After a framing failure those in front of it are
/// listed.
GroupListing listGroups(const std::vector<char>& bytes);

} // namespace mxtool
