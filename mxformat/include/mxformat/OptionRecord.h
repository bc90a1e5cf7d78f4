#pragma once

#include "mxformat/RecordReader.h"

#include <cstdint>

namespace mxformat {

/// The header of a list of the group `optionLists`; the options follow.
template <template <typename> class FieldOf>
struct OptionListHeaderOf
{
    FieldOf<std::uint8_t> id{};
    FieldOf<std::uint8_t> count{}; ///< Of options.

    template <typename Io, typename Record>
    static constexpr void transfer(Io& io, Record& record)
    {
        io.field(record.id);
        io.field(record.count);
    }
};

/// An option of a list.
template <template <typename> class FieldOf>
struct OptionRecordOf
{
    FieldOf<std::uint64_t> value{}; ///< An 8-byte slot.
    FieldOf<std::uint16_t> textId{};

    template <typename Io, typename Record>
    static constexpr void transfer(Io& io, Record& record)
    {
        io.field(record.value);
        io.field(record.textId);
    }
};

using OptionListHeader = OptionListHeaderOf<Plain>;
using OptionRecord = OptionRecordOf<Plain>;

constexpr std::uint32_t optionListHeaderSize = sizeOfRecord<OptionListHeader>(); ///< In bytes.
constexpr std::uint32_t optionSize = sizeOfRecord<OptionRecord>();               ///< In bytes.

/// Returns the bytes of a list of `count` options.
constexpr std::uint32_t optionListSize(std::uint8_t count)
{
    return optionListHeaderSize + optionSize * count;
}

} // namespace mxformat
