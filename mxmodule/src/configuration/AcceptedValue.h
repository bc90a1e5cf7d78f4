#pragma once

#include "DeviceReport.h"

#include <mxmodule/Assignment.h>

#include <string>
#include <vector>

namespace mxmodule {

/// Converts `value` (UTF-8) to the text with which the parsing library sets `parameter`. `value` is
/// the text of an option, its number, "#N" for option number N even if an option has the text N, or
/// a number, in physical units if the parameter is converted, with or without the unit. The present
/// value is always accepted; a value that does not fit into the parameter's bits never is. Throws
/// an `InvalidInput` that states what is accepted.
std::string acceptedValue(const DeviceReport::Parameter& parameter, const std::string& value,
                          ValueCheck check);

/// Returns for each option of `parameter` what selects it as such a value (UTF-8): its text, or
/// "#N" where that may be read in another way.
std::vector<std::string> callTexts(const DeviceReport::Parameter& parameter);

} // namespace mxmodule
