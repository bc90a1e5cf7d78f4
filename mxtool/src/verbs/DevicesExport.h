#pragma once

#include <mxmodule/Catalogue.h>

#include <string>
#include <vector>

namespace mxtool {

/// Writes the mx files of `modules` into `directory`, which it makes if it is missing. Skips
/// modules without an mx file. Returns the number of files written. Throws a `Failure`.
std::size_t exportModules(mxmodule::Catalogue& catalogue,
                          const std::vector<mxmodule::CatalogueEntry>& modules,
                          const std::string& directory);

} // namespace mxtool
