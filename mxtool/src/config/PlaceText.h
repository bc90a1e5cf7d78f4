#pragma once

#include "Csv.h"
#include "config/ParameterPlace.h"

#include <string>

namespace mxtool {

// The place of a parameter in outputs.

/// Returns "4" or "4-7".
std::string rangeText(std::size_t begin, std::size_t size);

/// Returns the bits of a bit field, empty for whole bytes.
std::string bitsText(const DeviceReport::Parameter& parameter);

/// Returns the registers of a place, counted from 0.
std::string registersText(const ParameterPlace& place);

/// The CSV columns of `registerCells`: the first register, counted from 0 (address) and from 1
/// (number), and the count.
CsvRow registerColumns();
CsvRow registerCells(const ParameterPlace& place);

} // namespace mxtool
