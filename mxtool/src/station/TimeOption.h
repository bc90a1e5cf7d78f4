#pragma once

#include <chrono>
#include <string>

namespace mxtool {

/// Returns the time that the option called `option` states as `text`, at least 1 ms. Throws a
/// `Failure` that names the option.
std::chrono::milliseconds timeOfOption(const std::string& option, const std::string& text);

} // namespace mxtool
