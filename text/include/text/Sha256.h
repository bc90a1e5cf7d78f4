#pragma once

#include <string>
#include <string_view>

namespace text {

/// Returns the SHA-256 of `bytes`, 64 lower-case hexadecimal digits.
std::string sha256(std::string_view bytes);

} // namespace text
