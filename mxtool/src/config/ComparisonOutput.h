#pragma once

#include "Csv.h"
#include "config/ImageComparison.h"

#include <string>

namespace mxtool {

/// Returns the deviations as a table for people.
std::string comparisonText(const ImageComparison& comparison);

/// Returns the deviations as CSV.
std::string comparisonCsv(const ImageComparison& comparison, const CsvStyle& style = {});

/// Returns the deviations as JSON, schema "mxtool.config-comparison" version 1.
std::string comparisonJson(const ImageComparison& comparison, const std::string& file);

} // namespace mxtool
