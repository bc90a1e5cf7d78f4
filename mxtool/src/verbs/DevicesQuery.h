#pragma once

#include "verbs/DevicesOptions.h"

#include <string>
#include <vector>

namespace mxtool {

/// Adds the options that say which modules are listed, exported or copied. Returns them.
std::vector<CLI::Option*> addQueryOptions(CLI::App& verb, DevicesOptions& options);

/// Reads the words of these options into `options.query`. Throws `CLI::ValidationError`.
void readQuery(DevicesOptions& options);

/// Returns `module` as a word of --after.
std::string wordOfAfter(const mxmodule::CatalogueEntry& module);

} // namespace mxtool
