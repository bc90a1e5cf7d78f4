#include "mxformat/ConversionTable.h"

#include <algorithm>
#include <bitset>
#include <cmath>
#include <cstring>

namespace mxformat {

float floatOf(std::uint32_t bits)
{
    float number = 0;
    std::memcpy(&number, &bits, sizeof number);
    return number;
}

bool isUsable(const PhysicalScale& scale)
{
    return scale.factor != 0 && std::isfinite(scale.factor) && std::isfinite(scale.offset);
}

ConversionTable::ConversionTable(const std::uint8_t* payload, std::size_t size)
{
    if (size % conversionRecordSize != 0) {
        return;
    }
    std::bitset<256> known;
    for (std::size_t at = 0; at < size; at += conversionRecordSize) {
        const auto record = readRecord<ConversionRecord>(payload + at);
        if (!known.test(record.id)) {
            known.set(record.id);
            entries.push_back(
                {record.id, {floatOf(record.factor), floatOf(record.offset)}, record.unitId});
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
