#pragma once

#include "Assignment.h"

#include <optional>
#include <string>
#include <vector>

namespace mxtool {

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

} // namespace mxtool
