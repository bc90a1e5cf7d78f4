#pragma once

#include <workbench/Workbench.h>

#include <memory>

namespace mxtool {

/// Starts the server of the workbench in its module, which is loaded at the first call: the program
/// works without it. Throws a `Failure`, also when the module is not installed.
std::unique_ptr<workbench::Server> startWorkbench(const workbench::Options& options);

} // namespace mxtool
