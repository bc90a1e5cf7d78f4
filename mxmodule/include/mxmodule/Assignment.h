#pragma once

#include "mxmodule/Finding.h"

#include <optional>
#include <string>
#include <vector>

namespace mxmodule {

/// How strictly a value is checked.
enum class ValueCheck
{
    Full,      ///< It must be in the range or an option.
    NumberOnly ///< Any number that fits into the parameter's bits.
};

/// A value for a parameter. Texts are UTF-8.
struct Assignment
{
    /// "NAME", "CHANNEL/NAME" (the channel's name, its number, or both as in tables; "module" for
    /// the module itself) or "#ID".
    std::string name = {};

    /// The text of an option, its number, "#N" for option number N even if an option has the text
    /// N, or a number, in physical units where the parameter has some, with or without the unit.
    std::string value = {};

    std::string place = {}; ///< Where it comes from, for findings: an option, FILE:LINE:COLUMN.
    Origin origin = Origin::Request; ///< Of the finding if it is rejected.

    /// The name that a row of a table gives beside the identifier in `name`; empty: none.
    std::string statedName = {};
};

/// The content of a file of parameter values.
struct Values
{
    std::vector<Assignment> assignments = {};    ///< In the order of the file.
    std::optional<std::vector<char>> image = {}; ///< The parameter image to write them into.
    std::string deviceTypeId = {}; ///< The module that they are for; empty: not stated.
    bool optionsByNumber = false;  ///< A number selects the option with that number, even if it is
                                   ///< the text of an option.
};

/// Reads the values in `content`, a YAML file or, by its extension, a JSON or CSV file: a map of
/// parameter names to values, in which a channel's parameters may be grouped in a map under the
/// channel's name, or the JSON or CSV that `Configuration` writes. `file` is the name for
/// findings. Throws a `Failure` naming line and column.
MXMODULE_API Values readValues(const std::string& content, const std::string& file);

} // namespace mxmodule
