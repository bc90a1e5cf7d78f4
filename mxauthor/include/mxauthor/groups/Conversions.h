#pragma once

#include "mxauthor/Field.h"

namespace mxauthor {

/// An entry of group 0x20c2. The numbers are kept as the bits of IEEE-754 binary32: there are some,
/// such as the many that are no number, which no text of a float tells apart.
struct Conversion
{
    Field<std::uint8_t> id;
    Field<std::uint32_t> factor;
    Field<std::uint32_t> offset;
    Field<std::uint16_t> unitId; ///< 0 = none.
};

/// Group 0x20c2.
struct Conversions
{
    std::vector<Conversion> entries;
    Field<Bytes> rest; ///< Fewer bytes than an entry, behind the last one.
};

} // namespace mxauthor
