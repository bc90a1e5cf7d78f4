#pragma once

#include "CommandLineOptions.h"

#include <mxmodule/Catalogue.h>

#include <cstddef>
#include <string>
#include <vector>

namespace mxtool {

/// The words of a call of the verb `devices`.
struct DevicesOptions
{
    std::string moduleId;
    std::string databaseUrl;
    std::string search;
    std::vector<std::string> where;
    std::size_t limit = 0; // 0: none
    std::string after;     // MODULE_ID or FAMILY/MODULE_ID; empty: from the first one on
    bool isExplained = false;
    std::string exportDirectory; // empty: none
    std::string copyUrl;         // empty: none
    std::string removedId;       // empty: none
    std::string format = "text";
    CsvOptions csv;
    std::string output = "-";
    mxmodule::CatalogueQuery query; // from --search, --where, --limit and --after
};

/// Adds the verb `devices` to `program`, with its options and footer, and returns it. `options`
/// must outlive the parsing.
CLI::App* addDevicesOptions(CLI::App& program, DevicesOptions& options);

/// Checks the words of the call, and reads those of the search into `options.query`. Throws
/// `CLI::ValidationError`.
void checkWords(DevicesOptions& options);

} // namespace mxtool
