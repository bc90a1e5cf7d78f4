#include "mxformat/RegisterOrder.h"

#include "mxformat/ParameterRecord.h"

#include <array>

namespace mxformat {

std::vector<std::size_t> registerOrder(const std::vector<std::uint8_t>& owners,
                                       const std::vector<std::uint8_t>& channels)
{
    constexpr std::size_t numbers = 256;
    std::array<std::vector<std::size_t>, numbers> parametersOf;
    for (std::size_t i = 0; i < owners.size(); ++i) {
        parametersOf[owners[i]].push_back(i);
    }
    std::vector<std::size_t> order = parametersOf[moduleLevel];
    for (const std::uint8_t channel : channels) {
        order.insert(order.end(), parametersOf[channel].begin(), parametersOf[channel].end());
    }
    return order;
}

} // namespace mxformat
