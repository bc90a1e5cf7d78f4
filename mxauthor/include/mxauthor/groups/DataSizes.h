#pragma once

#include "mxauthor/Field.h"

namespace mxauthor {

/// Group 0x0011: lines, each followed by CR LF.
struct DataSizes
{
    std::vector<Field<std::string>> lines; ///< Bytes without CR, LF and NUL.
};

} // namespace mxauthor
