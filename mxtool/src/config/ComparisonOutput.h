#pragma once

#include "Csv.h"
#include "config/Comparison.h"

#include <string>

namespace mxtool {

/// Returns the deviations as a table for people.
std::string comparisonText(const Comparison& comparison);

/// Returns the deviations as CSV.
std::string comparisonCsv(const Comparison& comparison, const CsvStyle& style = {});

/// Returns the deviations as JSON, schema "mxtool.config-comparison" version 1.
std::string comparisonJson(const Comparison& comparison, const std::string& file);

} // namespace mxtool
