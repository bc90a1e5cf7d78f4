#pragma once

#include "mxauthor/Field.h"

namespace mxauthor {

/// Group 0x0000.
struct Header
{
    Field<std::uint16_t> contentLength; ///< Meaningful bytes of the file, from its start.
    Field<Bytes> rest;                  ///< Bytes that nobody reads.
};

} // namespace mxauthor
