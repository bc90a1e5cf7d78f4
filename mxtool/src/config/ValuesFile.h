#pragma once

#include "Assignment.h"

#include <optional>
#include <string>
#include <vector>

namespace mxtool {

/// What a file of parameter values asks for.
struct Values
{
    std::vector<Assignment> assignments;    ///< In the order of the file.
    std::optional<std::vector<char>> image; ///< The parameter image that they are written into.
    std::string deviceTypeId;     ///< Of the module that they were made for; empty: not stated.
    bool optionsByNumber = false; ///< A number is that of an option, never its text.
};

/// Adds what one place of a file asks for. Throws a `Failure` when there are far more values than a
/// module can have parameters.
void addAssignment(const Assignment& assignment, std::vector<Assignment>& assignments);

/// Reads the values in `content`, a YAML or (named so) JSON or CSV file: a map of parameter names
/// to values, where a channel's parameters may stand together in a map under the channel's name; or
/// the JSON or CSV that `mxtool config` writes. `file` is the name for diagnostics. Throws a
/// `Failure` naming line and column.
Values readValues(const std::string& content, const std::string& file);

} // namespace mxtool
