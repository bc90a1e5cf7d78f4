#pragma once

#include <mxmodule/Assignment.h>

#include <string>
#include <vector>

namespace mxmodule {

/// Adds one assignment of a file. Throws a `Failure` when there are far more than a module can have
/// parameters.
void addAssignment(const Assignment& assignment, std::vector<Assignment>& assignments);

/// Reads the values of a CSV text: the output of `mxtool config --format csv`, whose column "id"
/// identifies the parameters, or a table with the columns "name", "value" and optionally "channel".
/// Rows without a value are ignored. Throws a `Failure` naming the line.
Values readValuesCsv(const std::string& content, const std::string& file);

} // namespace mxmodule
