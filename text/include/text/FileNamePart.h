#pragma once

#include <string>

namespace text {

/// Returns `bytes` as part of the name of a file on any system: letters, digits, "-" and "_", every
/// other byte as %xx. Different bytes give different parts.
std::string fileNamePart(const std::string& bytes);

/// Returns the same, cut to at most `most` bytes, not within a %xx.
std::string fileNamePart(const std::string& bytes, std::size_t most);

} // namespace text
