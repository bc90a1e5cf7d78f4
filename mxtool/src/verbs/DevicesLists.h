#pragma once

#include "ExitCode.h"
#include "verbs/DevicesOptions.h"

#include <mxmodule/Catalogue.h>

#include <string>
#include <vector>

namespace mxtool {

/// Reports that the catalogue has no module `moduleId`.
ExitCode reportUnknown(mxmodule::Catalogue& catalogue, const std::string& moduleId);

/// Reports those of `modules` that are stored without a file.
ExitCode reportWithoutFile(const std::vector<mxmodule::CatalogueEntry>& modules);

/// Reports how the list goes on after `page`, unless `quiet`.
void reportRest(const mxmodule::CataloguePage& page, bool quiet);

/// Writes how the search of the call is carried out.
ExitCode explainSearch(mxmodule::Catalogue& catalogue, const DevicesOptions& options);

/// Writes the list of modules.
ExitCode showAll(mxmodule::Catalogue& catalogue, const DevicesOptions& options, bool quiet);

/// Writes the record of the module of the call.
ExitCode showOne(mxmodule::Catalogue& catalogue, const DevicesOptions& options);

} // namespace mxtool
