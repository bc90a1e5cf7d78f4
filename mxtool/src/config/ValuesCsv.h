#pragma once

#include "config/ValuesFile.h"

namespace mxtool {

/// Reads the values of a CSV text: the output of `mxtool config --format csv`, whose column "id"
/// identifies the parameters, or a table with the columns "name", "value" and optionally "channel".
/// Rows without a value are ignored. Throws a `Failure` naming the line.
Values readValuesCsv(const std::string& content, const std::string& file);

} // namespace mxtool
