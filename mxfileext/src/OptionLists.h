#pragma once

#include <mxformat/OptionRecord.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace mxfileext {

/// The option lists of a file: a copy of its bytes, read when they are asked for.
class OptionLists
{
public:
    OptionLists() = default; ///< No list.
    OptionLists(const std::uint8_t* payload, std::size_t size) : bytes(payload, payload + size) {}

    /// Returns the options of every list `id`, in file order; none for 0. A list that runs past the
    /// group ends the search.
    std::vector<mxformat::OptionRecord> options(std::uint8_t id) const;

private:
    std::vector<std::uint8_t> bytes;
};

} // namespace mxfileext
