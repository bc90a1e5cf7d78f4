#pragma once

#include "DeviceReport.h"

#include <string>

namespace mxtool {

/// How strictly a value is looked at.
enum class ValueCheck
{
    Full,      ///< It must lie in the range or be an option.
    NumberOnly ///< Any number that the parameter can hold will do.
};

/// Returns the text by which the parsing library sets `parameter` to what `value` (UTF-8) means:
/// the text of an option, its number, "#N" for the number N whatever the options are called, or a
/// number, in physical units where the parameter is converted, with or without the unit. What the
/// parameter shows already is always accepted, what its bits cannot hold never is. Throws a
/// `Refusal` that says what is accepted.
std::string acceptedValue(const DeviceReport::Parameter& parameter, const std::string& value,
                          ValueCheck check);

} // namespace mxtool
