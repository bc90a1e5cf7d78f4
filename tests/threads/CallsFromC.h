#pragma once

#include <mxmodule/mxmodule.h>

#include <memory>
#include <string>

using HandleOfC = std::unique_ptr<mxmodule_module, void (*)(mxmodule_module*)>;

/// Returns the example module `path` by the C interface.
HandleOfC loadedByC(const char* path);

/// Returns what the C interface gives of MX0502, which all threads share, and of what it makes of
/// it: values set and refused, a configuration, channels.
std::string foundByC(const mxmodule_module* shared);
