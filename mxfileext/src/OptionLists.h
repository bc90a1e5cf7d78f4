#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace mxfileext {

/// One option of a parameter.
struct Option
{
    std::uint64_t slot = 0; ///< Its value, as in a parameter's 8-byte slot.
    std::uint16_t textId = 0;
};

/// The option lists of group 0x20c1: a copy of its bytes, read when they are asked for.
class OptionLists
{
public:
    static constexpr std::uint16_t group = 0x20C1;

    OptionLists() = default; ///< No list.
    OptionLists(const std::uint8_t* payload, std::size_t size) : bytes(payload, payload + size) {}

    /// Returns the options of every list `id`, in file order; none for 0. A list that runs past the
    /// group ends the search.
    std::vector<Option> options(std::uint8_t id) const;

private:
    std::vector<std::uint8_t> bytes;
};

} // namespace mxfileext
