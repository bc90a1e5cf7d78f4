#pragma once

#include "mxauthor/Field.h"

namespace mxauthor {

/// A line "KEY,K=VALUE" of a text group; the line end CR LF follows the value.
struct Entry
{
    Field<std::string> key;   ///< Without ",", CR and LF.
    Field<std::uint8_t> kind; ///< The one byte between "," and "=".
    Field<std::string> value; ///< Bytes without CR and LF.
};

/// Groups 0x0020 (catalogue) and 0x0040 (component).
struct Entries
{
    std::vector<Entry> entries;
};

} // namespace mxauthor
