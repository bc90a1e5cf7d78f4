#pragma once

#include <string>
#include <vector>

namespace mxtool {

/// Runs the program with `arguments` (without its own name) and returns its exit code. Results go
/// to standard output, diagnostics to standard error; nothing is thrown.
int run(std::vector<std::string> arguments);

} // namespace mxtool
