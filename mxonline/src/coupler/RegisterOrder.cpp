#include "coupler/RegisterOrder.h"

#include "bus/WordBytes.h"

#include <algorithm>

namespace mxonline {

namespace {

using mxstation::PartOrder;

std::uint16_t swapped(std::uint16_t word)
{
    return static_cast<std::uint16_t>(word << 8 | word >> 8);
}

} // namespace

void reorderValue(std::vector<std::uint16_t>& registers, std::size_t first, std::size_t count,
                  const mxstation::ModbusMap& map)
{
    const auto begin = registers.begin() + static_cast<std::ptrdiff_t>(first);
    const auto end = begin + static_cast<std::ptrdiff_t>(count);
    if (map.words == PartOrder::Little) {
        std::reverse(begin, end);
    }
    if (map.bytes == PartOrder::Little) {
        std::transform(begin, end, begin, swapped);
    }
}

std::vector<std::uint8_t> imageBytesOf(const std::vector<std::uint16_t>& registers,
                                       const mxstation::ModbusMap& map)
{
    std::vector<std::uint8_t> bytes;
    bytes.reserve(registers.size() * 2);
    for (const std::uint16_t word : registers) {
        appendWord(bytes, map.bytes == PartOrder::Little ? swapped(word) : word);
    }
    return bytes;
}

std::uint16_t registerOf(std::uint8_t first, std::uint8_t second, const mxstation::ModbusMap& map)
{
    const auto word = static_cast<std::uint16_t>(first << 8 | second);
    return map.bytes == PartOrder::Little ? swapped(word) : word;
}

} // namespace mxonline
