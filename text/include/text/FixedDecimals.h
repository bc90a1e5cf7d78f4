#pragma once

#include <string>

namespace text {

/// Returns `value` with six decimals: the text that "%f" gives in the C locale, whatever the host's
/// locale is.
std::string fixedDecimals(float value);

} // namespace text
