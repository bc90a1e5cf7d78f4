#pragma once

#include "mxauthor/Field.h"

#include <optional>
#include <string>
#include <vector>

namespace mxauthor {

/// A run of bytes of an mx file with one meaning. Texts hold bytes of the file.
struct ExplainedPart
{
    enum class Kind
    {
        Number,
        Text,
        Raw
    };

    Place place;
    int group = -1;      ///< Index among the groups of the file; -1: outside them.
    int record = -1;     ///< Index among the records of the group; -1: of no record.
    std::string subject; ///< The record, such as `parameter 3 "Filter"`; may be empty.
    std::string field;   ///< Its name in docs/format/mx.ksy, or what is between fields.
    Kind kind = Kind::Raw;
    std::string value;   ///< A number in decimal, a text; empty for bytes.
    std::string meaning; ///< May be empty.
    bool isRead = true;  ///< False: not read.
};

/// A group as it is in the file.
struct ExplainedGroup
{
    std::uint16_t id;
    std::string name; ///< What it holds; empty when the identifier is not known.
    Place place;
    bool isRead; ///< False: unknown, or not the first of its identifier.
};

/// The place of something that has a name.
struct NamedPlace
{
    std::string what; ///< Such as "parameter 3", "default of parameter 3", "text 100".
    std::string name;
    Place place;
};

/// The meaning of every byte of an mx file.
struct Explanation
{
    std::vector<ExplainedGroup> groups;
    std::vector<ExplainedPart> parts;   ///< In file order; each byte is in exactly one.
    std::vector<NamedPlace> names;      ///< Parameters, channels and texts, by their place.
    std::optional<std::string> failure; ///< Message of a framing failure.
};

/// Explains the mx data `bytes` (those of the file, nothing after them). After a framing failure
/// the rest of the file is one part.
Explanation explain(const std::vector<char>& bytes);

} // namespace mxauthor
