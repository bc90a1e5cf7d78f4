#pragma once

#include "mxformat/RecordReader.h"

#include <cstdint>

namespace mxformat {

/// The header of a list of the group `optionLists`; the options follow. `FieldOf` as in
/// `ParameterRecordOf`.
template <template <typename> class FieldOf>
struct OptionListHeaderOf
{
    FieldOf<std::uint8_t> id{};
    FieldOf<std::uint8_t> count{}; ///< Of options.
};

/// An option of a list.
template <template <typename> class FieldOf>
struct OptionRecordOf
{
    FieldOf<std::uint64_t> value{}; ///< An 8-byte slot.
    FieldOf<std::uint16_t> textId{};
};

/// @name Layout: the fields in the order of the file.
/// @{
template <typename Io, typename Record>
constexpr void transferOptionListHeader(Io& io, Record& header)
{
    io.field(header.id);
    io.field(header.count);
}

template <typename Io, typename Record>
constexpr void transferOptionRecord(Io& io, Record& option)
{
    io.field(option.value);
    io.field(option.textId);
}
/// @}

using OptionListHeader = OptionListHeaderOf<Plain>;
using OptionRecord = OptionRecordOf<Plain>;

constexpr std::uint32_t optionListHeaderSize = 2; ///< Bytes of an `OptionListHeader`.
constexpr std::uint32_t optionSize = 10;          ///< Bytes of an `OptionRecord`.

/// Returns the bytes of a list of `count` options.
constexpr std::uint32_t optionListSize(std::uint8_t count)
{
    return optionListHeaderSize + optionSize * count;
}

inline OptionListHeader readOptionListHeader(const std::uint8_t* bytes)
{
    RecordReader in(bytes);
    OptionListHeader header;
    transferOptionListHeader(in, header);
    return header;
}

inline OptionRecord readOptionRecord(const std::uint8_t* bytes)
{
    RecordReader in(bytes);
    OptionRecord option;
    transferOptionRecord(in, option);
    return option;
}

} // namespace mxformat
