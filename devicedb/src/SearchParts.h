#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace devices::database {

/// One to three characters that follow each other in a line of a folded text.
using TextPart = std::uint64_t;

/// Returns each part of `text`, as often as it is there.
std::vector<TextPart> partsOf(const std::string& text);

/// Returns the bytes of `part`, as the index stores it.
std::string bytesOfPart(TextPart part);

/// Returns parts which each text with `text` in it has: few, which cover its lines, because each
/// one that is looked up costs more than the modules that it would leave out. None for empty lines.
std::vector<std::string> partsCovering(const std::string& text);

} // namespace devices::database
