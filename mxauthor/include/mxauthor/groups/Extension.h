#pragma once

#include "mxauthor/Field.h"

namespace mxauthor {

/// Group 0x20f0.
struct Extension
{
    Field<std::uint8_t> version;
    Field<std::uint16_t> gtinId; ///< Text identifier, 0 = none.
    Field<Bytes> date;           ///< 10 bytes, ended early by 0x00 or CR.
    Field<Bytes> rest;           ///< Bytes that nobody reads.
};

} // namespace mxauthor
