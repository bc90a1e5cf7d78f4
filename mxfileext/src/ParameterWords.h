#pragma once

#include "Parameter.h"

#include <cstdint>
#include <string>

namespace mxfileext {

/// Returns `text` in quotation marks, its control bytes spelled out: NUL as "\0", others as "\x1b".
std::string quoted(const std::string& text);

/// Returns how messages name `parameter`: `Parameter 3 "Filter"`, without the name where the text
/// table of `module` has none.
std::string parameterName(std::uint8_t module, const Parameter& parameter);

/// Returns the options that `parameter` can hold, as an addition to what is expected:
/// `; its options: 0 "off", 5 "slow"`. At most twenty are named. Empty where there is none.
std::string optionsText(std::uint8_t module, const Parameter& parameter);

} // namespace mxfileext
