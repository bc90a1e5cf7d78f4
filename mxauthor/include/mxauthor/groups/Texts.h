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

/// Group 0x0011: lines, each followed by CR LF.
struct DataSizes
{
    std::vector<Field<std::string>> lines; ///< Bytes without CR, LF and NUL.
};

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
