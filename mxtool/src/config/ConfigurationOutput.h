#pragma once

#include "Configuration.h"
#include "Csv.h"

#include <string>

namespace mxtool {

/// Returns the buffer in hexadecimal and a table of the parameters in it, as text.
std::string configurationText(const Configuration& configuration);

/// Returns the table as CSV. For Modbus each row names its first register, counted from 0 and from
/// 1.
std::string configurationCsv(const Configuration& configuration, const CsvStyle& style = {});

/// Returns buffer and table as JSON, schema "mxtool.config" version 1. `readValues` reads it back.
std::string configurationJson(const Configuration& configuration, const std::string& file);

} // namespace mxtool
