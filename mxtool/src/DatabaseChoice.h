#pragma once

#include <mxmodule/Catalogue.h>

#include <string>

namespace CLI {
class App;
}

namespace mxtool {

/// Adds --db to `verb`. `url` must outlive the parsing.
void addDatabaseOption(CLI::App& verb, std::string& url);

/// Opens the existing catalogue at `url` (empty: the default) as an input of this run. Throws a
/// `Failure`.
mxmodule::Catalogue openCatalogue(const std::string& url);

/// Opens the catalogue at `url` (empty: the default) as an output of this run, creating it if it is
/// missing. Throws a `Failure`.
mxmodule::Catalogue openCatalogueForWriting(const std::string& url);

} // namespace mxtool
