#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace devices::parser::mx {

/// What is known of a list of channel names (group 0x20d7): where the first entry of each channel
/// number is, as far as the list was walked. It grows with the walk, so that each entry is read
/// once.
class ChannelNameIndex
{
public:
    /// Returns where the first entry of `number` is in the list of `size` bytes at `entries`,
    /// which is the same in every call. The last entry may end after the list.
    std::optional<std::uint32_t> find(const std::uint8_t* entries, std::uint32_t size,
                                      std::uint8_t number);

private:
    std::array<std::uint16_t, 256> places{}; // by number, from 1; 0: none was met
    std::uint32_t next = 0;
};

} // namespace devices::parser::mx
