#pragma once

#include "devices/database/ModuleContent.h"

#include <cstdint>
#include <string>
#include <vector>

namespace devices::database {

/// A property of a module that the search index knows besides its texts. The letters are stored.
enum class Fact : char
{
    InBytes = 'i',
    OutBytes = 'o',
    ParameterBytes = 'p',
    FileBytes = 'f',
    Channels = 'c',   ///< Their number.
    Parameters = 'a', ///< Their number.
    Direction = 'd',  ///< Of any channel.
    SizeLetter = 's', ///< Of any channel.
    Unit = 'u'        ///< Of any parameter.
};

/// Sizes of a record in bytes.
struct RecordSizes
{
    std::int64_t in;
    std::int64_t out;
    std::int64_t parameterBlock;
    std::int64_t mxFile; ///< On disk.
};

/// Returns the part of the index for the modules with this fact. Parts of one fact are in the order
/// of its numbers, bytewise; no part of a text begins with the same byte.
std::string factPart(Fact fact, std::int64_t number);

/// The same for a text, of which a long one is shortened.
std::string factPart(Fact fact, const std::string& text);

/// Returns whether `part` is of a fact.
bool isFact(const std::string& part);

/// Returns the part before all of `fact`, and the first one after them.
std::string beginOfFacts(Fact fact);
std::string endOfFacts(Fact fact);

/// Returns the parts of all facts of a module; a null `content`: it has none.
std::vector<std::string> factPartsOf(const RecordSizes& sizes, const ModuleContent* content);

/// Returns `parts` as one value of a column.
std::string joinedFacts(const std::vector<std::string>& parts);

/// Returns the parts of such a value.
std::vector<std::string> splitFacts(const std::string& joined);

} // namespace devices::database
