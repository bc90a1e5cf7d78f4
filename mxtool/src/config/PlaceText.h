#pragma once

#include "Csv.h"
#include "config/ParameterPlace.h"

#include <string>

namespace mxtool {

// How outputs show the place of a parameter.

/// Returns "4" or "4-7".
std::string rangeText(std::size_t begin, std::size_t size);

/// Returns the bits of a bit field, empty for whole bytes.
std::string bitsText(const DeviceReport::Parameter& parameter);

/// Returns the registers of a place, counted from 0.
std::string registersText(const ParameterPlace& place);

/// The columns of CSV that `registerCells` fills: the first register, as masters count them from 0
/// (addresses) or from 1 (numbers), and how many.
CsvRow registerColumns();
CsvRow registerCells(const ParameterPlace& place);

} // namespace mxtool
