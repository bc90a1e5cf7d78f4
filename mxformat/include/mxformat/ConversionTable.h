#pragma once

#include "mxformat/PhysicalScale.h"
#include "mxformat/RecordReader.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace mxformat {

/// An entry of the group `conversions`.
template <template <typename> class FieldOf>
struct ConversionRecordOf
{
    FieldOf<std::uint8_t> id{};
    FieldOf<std::uint32_t> factor{}; ///< The bits of a binary32, as is `offset`.
    FieldOf<std::uint32_t> offset{};
    FieldOf<std::uint16_t> unitId{}; ///< 0: none.

    template <typename Io, typename Record>
    static constexpr void transfer(Io& io, Record& record)
    {
        io.field(record.id);
        io.field(record.factor);
        io.field(record.offset);
        io.field(record.unitId);
    }
};

using ConversionRecord = ConversionRecordOf<Plain>;

/// Bytes of a `ConversionRecord`.
constexpr std::uint32_t conversionRecordSize = sizeOfRecord<ConversionRecord>();

/// Returns the number whose IEEE-754 binary32 bits are `bits`.
float floatOf(std::uint32_t bits);

/// Whether a conversion with this scale is used: its factor is not 0, both numbers are finite.
bool isUsable(const PhysicalScale& scale);

/// The conversions of the group `conversions`, as far as they are used.
class ConversionTable
{
public:
    struct Entry
    {
        std::uint8_t id = 0;
        PhysicalScale scale;
        std::uint16_t unitTextId = 0; ///< 0: no unit.
    };

    ConversionTable() = default; ///< Nothing is converted.

    /// Reads the payload of `size` bytes. One that is no whole number of entries converts nothing.
    ConversionTable(const std::uint8_t* payload, std::size_t size);

    /// Returns the first entry `id`; null for 0, for one that is not there, and for one that
    /// is not usable.
    const Entry* find(std::uint8_t id) const;

    /// Returns the scale of the entry `id`, factor 1 and offset 0 without one.
    PhysicalScale scale(std::uint8_t id) const;

private:
    std::vector<Entry> entries; // one per identifier, the first
};

} // namespace mxformat
