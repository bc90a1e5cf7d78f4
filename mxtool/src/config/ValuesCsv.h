#pragma once

#include "config/ValuesFile.h"

namespace mxtool {

/// Reads the values of a CSV text: those of `mxtool config --format csv`, whose column "id" names
/// the parameters, or a table of the columns "name", "value" and, where wished, "channel". Rows
/// without a value ask for nothing. Throws a `Failure` naming the line.
Values readValuesCsv(const std::string& content, const std::string& file);

} // namespace mxtool
