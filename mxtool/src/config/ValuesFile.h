#pragma once

#include "ExitCode.h"

#include <optional>
#include <string>
#include <vector>

namespace mxtool {

/// A value that the user sets. Texts are UTF-8.
struct Assignment
{
    std::string place; ///< Where it is set: a command line argument, or FILE:LINE:COLUMN.
    std::string name;  ///< As accepted by `parameterCalled`.
    std::string value; ///< As accepted by `acceptedValue`.
    ExitCode code;     ///< Exit code if it is rejected.
    /// The name that a row of a table gives beside this identifier; empty: none.
    std::string statedName = {};
};

/// The content of a file of parameter values.
struct Values
{
    std::vector<Assignment> assignments;    ///< In the order of the file.
    std::optional<std::vector<char>> image; ///< The parameter image to write them into.
    std::string deviceTypeId;               ///< The module that they are for; empty: not stated.
    bool optionsByNumber = false; ///< A number selects the option with that number, even if it is
                                  ///< the text of an option.
};

/// Adds one assignment of a file. Throws a `Failure` when there are far more than a module can have
/// parameters.
void addAssignment(const Assignment& assignment, std::vector<Assignment>& assignments);

/// Reads the values in `content`, a YAML file or, by its extension, a JSON or CSV file: a map of
/// parameter names to values, in which a channel's parameters may be grouped in a map under the
/// channel's name, or the JSON or CSV that `mxtool config` writes. `file` is the name for
/// diagnostics. Throws a `Failure` naming line and column.
Values readValues(const std::string& content, const std::string& file);

/// Reads the values of a CSV text: the output of `mxtool config --format csv`, whose column "id"
/// identifies the parameters, or a table with the columns "name", "value" and optionally "channel".
/// Rows without a value are ignored. Throws a `Failure` naming the line.
Values readValuesCsv(const std::string& content, const std::string& file);

} // namespace mxtool
