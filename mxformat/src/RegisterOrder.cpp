#include "mxformat/RegisterOrder.h"

#include "mxformat/ParameterRecord.h"

#include <array>
#include <numeric>

namespace mxformat {

std::vector<std::size_t> registerOrder(const std::vector<std::uint8_t>& owners,
                                       const std::vector<std::uint8_t>& channels)
{
    constexpr std::size_t numbers = 256;
    // Those of owner n are from begins[n] to before begins[n + 1] in `byOwner`, in their order.
    std::array<std::size_t, numbers + 1> begins{};
    for (const std::uint8_t owner : owners) {
        ++begins[owner + std::size_t{1}];
    }
    std::partial_sum(begins.begin(), begins.end(), begins.begin());
    std::array<std::size_t, numbers + 1> next = begins;
    std::vector<std::size_t> byOwner(owners.size());
    for (std::size_t i = 0; i < owners.size(); ++i) {
        byOwner[next[owners[i]]++] = i;
    }
    std::vector<std::size_t> order;
    order.reserve(owners.size());
    const auto append = [&](std::uint8_t owner) {
        const auto at = [&](std::size_t position) {
            return byOwner.begin() + static_cast<std::ptrdiff_t>(begins[position]);
        };
        order.insert(order.end(), at(owner), at(owner + std::size_t{1}));
    };
    append(moduleLevel);
    for (const std::uint8_t channel : channels) {
        append(channel);
    }
    return order;
}

} // namespace mxformat
