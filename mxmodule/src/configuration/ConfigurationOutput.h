#pragma once

#include "configuration/ConfiguredImage.h"

#include <mxmodule/CsvStyle.h>

#include <string>

namespace mxmodule {

/// Returns the buffer in hexadecimal and a table of the parameters in it, as text.
std::string configurationText(const ConfiguredImage& configuration, Listing listing = Listing::All);

/// Returns the table as CSV. For Modbus each row names its first register, counted from 0 and from
/// 1.
std::string configurationCsv(const ConfiguredImage& configuration, const CsvStyle& style = {},
                             Listing listing = Listing::All);

/// Returns buffer and table as JSON, schema "mxtool.config" version 1. `readValues` reads it back.
std::string configurationJson(const ConfiguredImage& configuration, Listing listing = Listing::All);

/// Returns the deviations as a table for people.
std::string comparisonText(const ImageComparison& comparison);

/// Returns the deviations as CSV.
std::string comparisonCsv(const ImageComparison& comparison, const CsvStyle& style = {});

/// Returns the deviations as JSON, schema "mxtool.config-comparison" version 1.
std::string comparisonJson(const ImageComparison& comparison);

/// Returns the values of `configuration` as a values file (YAML) to be edited: a comment states the
/// range or options and the default of each value; a channel's parameters are grouped under the
/// channel's name.
std::string configurationValues(const ConfiguredImage& configuration,
                                Listing listing = Listing::All);

} // namespace mxmodule
