#include "DatabaseChoice.h"

#include "CommandLineOptions.h"
#include "FilesInUse.h"

#include <CLI/CLI.hpp>

namespace mxtool {

namespace {

using mxmodule::Catalogue;

std::string chosenUrl(const std::string& url)
{
    return url.empty() ? Catalogue::defaultUrl() : url;
}

} // namespace

void addDatabaseOption(CLI::App& verb, std::string& url)
{
    CLI::Option* const option =
        verb.add_option("--db", url,
                        "Database URL, sqlite:PATH or postgresql:CONNECTION; default: "
                        "DEVICE_DATABASE_URL, else sqlite:devices.sqlite");
    option->type_name("URL");
    rejectEmptyValue(*option);
}

Catalogue openCatalogue(const std::string& url)
{
    const std::string chosen = chosenUrl(url);
    filesInUse().addInputDatabase(chosen);
    return Catalogue::open(chosen);
}

Catalogue openCatalogueForWriting(const std::string& url)
{
    const std::string chosen = chosenUrl(url);
    filesInUse().addOutputDatabase(chosen);
    return Catalogue::openOrCreate(chosen);
}

} // namespace mxtool
