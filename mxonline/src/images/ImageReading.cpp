#include "images/ImageReading.h"

#include "coupler/ModuleRegisters.h"
#include "coupler/RegisterOrder.h"

#include <fmt/format.h>
#include <text/Beginning.h>

#include <algorithm>

namespace mxonline {

namespace {

using mxstation::Plan;

const mxstation::ModbusImage& registersOfImage(const Plan& plan, bool isInput)
{
    return isInput ? plan.modbus->inputs : plan.modbus->outputs;
}

std::vector<RegisterItem> itemsOf(const Plan& plan, bool isInput,
                                  const std::vector<std::size_t>& channels)
{
    std::vector<RegisterItem> items;
    for (const std::size_t index : channels) {
        const mxstation::Channel& channel = plan.channels[index];
        if (channel.isInput == isInput) {
            items.push_back({registersOf(plan, channel),
                             moduleText(plan.modules[channel.module - 1]),
                             fmt::format("channel \"{}\"", text::shortened(channel.name))});
        }
    }
    std::stable_sort(items.begin(), items.end(), [](const RegisterItem& a, const RegisterItem& b) {
        return a.range.address < b.range.address;
    });
    return items;
}

// Channels of bits share their registers.
std::vector<RegisterRange> differentRanges(const std::vector<RegisterItem>& items)
{
    std::vector<RegisterRange> ranges;
    for (const RegisterItem& item : items) {
        if (ranges.empty() || !(ranges.back() == item.range)) {
            ranges.push_back(item.range);
        }
    }
    return ranges;
}

} // namespace

RegisterRange registersOf(const Plan& plan, const mxstation::Channel& channel)
{
    const mxstation::ImageBytes bytes = bytesOf(plan, channel);
    const std::uint64_t first = bytes.offset / 2;
    const std::uint64_t count = (bytes.end() + 1) / 2 - first;
    return {static_cast<std::uint32_t>(registersOfImage(plan, channel.isInput).address + first),
            static_cast<std::uint32_t>(count)};
}

ImageReading::ImageReading(const Plan& plan, bool isInput, const std::vector<std::size_t>& channels)
    : ImageReading(plan, isInput, itemsOf(plan, isInput, channels))
{}

ImageReading::ImageReading(const Plan& plan, bool isInput, const std::vector<RegisterItem>& items)
    : map(*plan.modbus),
      address(registersOfImage(plan, isInput).address),
      ranges(differentRanges(items)),
      reading(registersOfImage(plan, isInput).readFunction, items, map.mostRead),
      bytes(((isInput ? plan.input : plan.output).size + 1) / 2 * 2)
{}

void ImageReading::read(ModbusClient& client)
{
    reading.read(client);
    for (const RegisterRange& range : ranges) {
        const std::vector<std::uint8_t> part = imageBytesOf(reading.values(range), map);
        std::copy(part.begin(), part.end(),
                  bytes.begin() + static_cast<std::ptrdiff_t>(range.address - address) * 2);
    }
}

} // namespace mxonline
