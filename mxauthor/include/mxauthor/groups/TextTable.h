#pragma once

#include "mxauthor/Field.h"

namespace mxauthor {

/// A text record of group 0x20d3; the line end CR LF follows the text.
struct TextRecord
{
    Field<std::uint16_t> id;
    Field<std::string> text; ///< Bytes without CR, LF and NUL.
};

/// Group 0x20d3.
struct TextTable
{
    Field<std::uint16_t> head; ///< Not read by anybody.
    std::vector<TextRecord> texts;
};

} // namespace mxauthor
