#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace mxformat {

/// Returns the order of the parameters of a module in its Modbus registers, as positions in
/// `owners`: those of the module itself, then those of each channel. `owners` has the channel
/// number of each parameter and `channels` those of the channels, both in the order of the module.
/// The parameters of a number that several channels have are there once for each of them.
std::vector<std::size_t> registerOrder(const std::vector<std::uint8_t>& owners,
                                       const std::vector<std::uint8_t>& channels);

} // namespace mxformat
