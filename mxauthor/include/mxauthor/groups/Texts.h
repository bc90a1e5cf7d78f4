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

/// Groups `catalogue` and `component`.
struct Entries
{
    std::vector<Entry> entries;
};

/// Group `dataSizes`: lines, each followed by CR LF.
struct DataSizes
{
    std::vector<Field<std::string>> lines; ///< Bytes without CR, LF and NUL.
};

/// A text record of the group `texts`; the line end CR LF follows the text.
struct TextRecord
{
    Field<std::uint16_t> id;
    Field<std::string> text; ///< Bytes without CR, LF and NUL.
};

/// Group `texts`.
struct TextTable
{
    Field<std::uint16_t> head; ///< Not read.
    std::vector<TextRecord> texts;
};

} // namespace mxauthor
