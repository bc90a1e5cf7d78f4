#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace workbench {

constexpr std::size_t mostBytesOfPlainFile = std::size_t{16} << 20;

/// Returns the text of the file at `path`, nothing if nothing is there. Throws a
/// `mxmodule::Failure` for all that is not a regular file of at most `mostBytesOfPlainFile`: a link
/// too. `name` is the name for messages. Waits for no writer of a pipe.
std::optional<std::string> textOfPlainFile(const std::string& path, const std::string& name);

} // namespace workbench
