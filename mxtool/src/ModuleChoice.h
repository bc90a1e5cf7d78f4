#pragma once

#include <mxmodule/Module.h>

#include <string>

namespace CLI {
class App;
}

namespace mxtool {

/// The options of a verb that translates a module.
struct ModuleChoice
{
    std::string file;               ///< The mx file or its text form, "-" for standard input.
    std::string parameterBlockFile; ///< Replaces the default parameter block; empty: none.
    mxmodule::ImageOffsets offsets;
};

/// Adds FILE and --param-block to `verb`, for output without addresses. `choice` must outlive the
/// parsing.
void addModuleChoice(CLI::App& verb, ModuleChoice& choice);

/// Adds the same, --in-offset and --out-offset.
void addPlacedModuleChoice(CLI::App& verb, ModuleChoice& choice);

/// Loads and translates the module. Reports warnings about the offsets and the parser's log lines
/// from `logLevel` on. Throws a `Failure`.
mxmodule::Module loadModule(const ModuleChoice& choice, const std::string& logLevel);

} // namespace mxtool
