#pragma once

#include <string>

namespace mxmodule {

/// Returns the hint for a URL of an unknown scheme; empty for others. It omits the text after a
/// colon, which may contain a password.
std::string hintForScheme(const std::string& url);

/// Returns the hint for an existing database that cannot be opened at `url`; may be empty.
std::string hintForOpening(const std::string& url);

} // namespace mxmodule
