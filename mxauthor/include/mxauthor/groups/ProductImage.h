#pragma once

#include "mxauthor/Field.h"

namespace mxauthor {

/// Group 0x20f1.
struct ProductImage
{
    Field<Bytes> bytes;
};

} // namespace mxauthor
