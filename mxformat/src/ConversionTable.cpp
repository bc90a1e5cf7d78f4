#include "mxformat/ConversionTable.h"

#include "mxformat/BigEndian.h"

#include <algorithm>
#include <bitset>
#include <cmath>
#include <cstring>

namespace mxformat {

namespace {

constexpr std::size_t entrySize = 11;

float readFloatBE(const std::uint8_t* bytes)
{
    const std::uint32_t bits = readBigEndian<std::uint32_t>(bytes);
    float number = 0;
    std::memcpy(&number, &bits, sizeof number);
    return number;
}

} // namespace

bool isUsable(const PhysicalScale& scale)
{
    return scale.factor != 0 && std::isfinite(scale.factor) && std::isfinite(scale.offset);
}

ConversionTable::ConversionTable(const std::uint8_t* payload, std::size_t size)
{
    if (size % entrySize != 0) {
        return;
    }
    std::bitset<256> known;
    for (std::size_t at = 0; at < size; at += entrySize) {
        const std::uint8_t* const entry = payload + at;
        const std::uint8_t id = entry[0];
        if (!known.test(id)) {
            known.set(id);
            entries.push_back({id,
                               {readFloatBE(entry + 1), readFloatBE(entry + 5)},
                               readBigEndian<std::uint16_t>(entry + 9)});
        }
    }
}

const ConversionTable::Entry* ConversionTable::find(std::uint8_t id) const
{
    const auto entry = std::find_if(entries.begin(), entries.end(),
                                    [id](const Entry& candidate) { return candidate.id == id; });
    return id == 0 || entry == entries.end() || !isUsable(entry->scale) ? nullptr : &*entry;
}

PhysicalScale ConversionTable::scale(std::uint8_t id) const
{
    const Entry* const entry = find(id);
    return entry == nullptr ? PhysicalScale{} : entry->scale;
}

} // namespace mxformat
