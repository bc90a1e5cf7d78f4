#pragma once

#include <string>

namespace text {

/// Returns `utf8` as a YAML scalar, in brackets too: plain where every reader of YAML reads it as
/// this text or number, otherwise as `yamlQuoted`.
std::string yamlScalar(const std::string& utf8);

/// Returns `utf8` in double quotes, as in JSON.
std::string yamlQuoted(const std::string& utf8);

} // namespace text
