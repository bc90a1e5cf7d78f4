#pragma once

#include "mxauthor/Field.h"

namespace mxauthor {

/// The payload of a group whose identifier is not known, or which does not have the shape that its
/// identifier asks for.
struct RawGroup
{
    Field<Bytes> bytes;
};

} // namespace mxauthor
