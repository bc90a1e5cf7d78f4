#pragma once

#include "mxauthor/Field.h"

namespace mxauthor {

/// Group 0x0010, the default parameter block behind a header of variable length.
struct ParameterBlock
{
    Field<std::uint8_t> version;
    Field<std::uint8_t> descriptor; ///< Says how long the header is.
    Field<Bytes> skipped;           ///< The rest of the header.
    Field<Bytes> block;
};

/// Returns how many bytes the header of the block has, `version` and `descriptor` included; modulo
/// 256, as readers compute it.
std::uint8_t parameterBlockHeaderSize(std::uint8_t descriptor);

} // namespace mxauthor
