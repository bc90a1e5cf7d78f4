#pragma once

#include <string>
#include <vector>

namespace mxonline {

/// Returns the SHA-256 of `bytes`, 64 lower-case hexadecimal digits.
std::string sha256(const std::vector<char>& bytes);

} // namespace mxonline
