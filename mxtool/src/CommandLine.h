#pragma once

#include <string>
#include <vector>

namespace mxtool {

/// Runs the program with `arguments` (without the program name) and returns its exit code. Writes
/// results to standard output, diagnostics to standard error. Throws nothing.
int run(std::vector<std::string> arguments);

} // namespace mxtool
