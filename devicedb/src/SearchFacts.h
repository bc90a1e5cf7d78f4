#pragma once

#include "devices/database/ModuleContent.h"
#include "devices/database/ModuleQuery.h"

#include <cstdint>
#include <string>
#include <vector>

namespace devices::database {

/// A property of a module that the search index knows besides the texts for words. The letters are
/// stored; a number has also those of the upper case.
enum class Fact : char
{
    InBytes = 'i',
    OutBytes = 'o',
    ParameterBytes = 'p',
    FileBytes = 'f',
    Channels = 'c',   ///< Their number.
    Parameters = 'a', ///< Their number.
    Family = 'y',
    ModuleId = 'm',
    Direction = 'd',  ///< Of any channel.
    SizeLetter = 's', ///< Of any channel.
    Unit = 'u'        ///< Of any parameter.
};

/// Returns whether `part` of the index is of a fact, and not of a text for words.
bool isFact(const std::string& part);

/// Returns the part of the modules in which `fact` is `number`.
std::string factPart(Fact fact, std::int64_t number);

/// Returns the part of the modules in which `fact` is near `number`; it is the same for numbers
/// that differ little. These parts are in the order of the numbers, bytewise.
std::string nearFactPart(Fact fact, std::int64_t number);

/// Returns the part before all of `nearFactPart`, and the first one after them.
std::string beginOfNear(Fact fact);
std::string endOfNear(Fact fact);

/// Returns the parts which a module has whose text `fact` holds `text`.
std::vector<std::string> factPartsCovering(Fact fact, const std::string& text);

/// Returns the parts of the facts of a module, without those of its key; a null `content`: it has
/// none.
std::vector<std::string> factPartsOf(const ModuleSummary& module, const ModuleContent* content);

/// Returns the parts of the facts of a key.
std::vector<std::string> factPartsOf(const ModuleKey& key);

/// Returns `parts` as one value of a column.
std::string joinedFacts(const std::vector<std::string>& parts);

/// Returns the parts of such a value.
std::vector<std::string> splitFacts(const std::string& joined);

} // namespace devices::database
