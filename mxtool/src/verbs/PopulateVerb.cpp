#include "DatabaseChoice.h"
#include "Diagnostic.h"
#include "OutputFile.h"
#include "ToolObserver.h"
#include "Verbs.h"

#include <mxmodule/Population.h>

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/ShownText.h>

#include <string>

namespace mxtool {

namespace {

constexpr const char* populateFooter =
    R"(Either every file that can be translated is in the database afterwards, or nothing has changed;
others read the previous state until then. Entries MX*.bin that are not files are reported and left out.

Example:
  $ mxtool populate examples/modules --db sqlite:/tmp/devices.sqlite
  error: File MX9999.bin: Parser::parse(): Truncated mx buffer
  sqlite:/tmp/devices.sqlite: 38 modules inserted, 1 failed
)";

struct PopulateOptions
{
    std::string directory;
    std::string databaseUrl;
    bool replace = false;
};

// A line per module removed, and what has changed in `catalogue`.
std::string summary(const mxmodule::Population& done, bool replace, const std::string& catalogue)
{
    std::string text;
    for (const mxmodule::CatalogueEntry& module : done.removed) {
        text += fmt::format("removing {} {}\n", text::forTerminal(module.moduleId),
                            text::forTerminal(module.label));
    }
    return text + fmt::format("{}: {} inserted{}, {} failed{}\n", text::forTerminal(catalogue),
                              text::counted(done.inserted, "module"),
                              done.replaced != 0 ? fmt::format(", {} replaced", done.replaced) : "",
                              done.failed,
                              replace ? fmt::format(", {} removed", done.removed.size()) : "");
}

ExitCode runPopulate(const PopulateOptions& options, const GlobalOptions& global)
{
    ToolObserver observer(global.logLevel);
    const mxmodule::MxDirectory directory = listMxDirectory(options.directory, &observer);
    report(directory.leftOut);
    mxmodule::Catalogue catalogue = openCatalogueForWriting(options.databaseUrl);
    const mxmodule::Population done = populate(directory, catalogue, {options.replace}, &observer);
    if (!global.quiet) {
        writeOutput("-", summary(done, options.replace, catalogue.name()));
    }
    return done.failed == 0 ? ExitCode::Done : ExitCode::Findings;
}

} // namespace

void addPopulateVerb(CLI::App& program, const GlobalOptions& global, const VerbChoice& choose)
{
    CLI::App* verb =
        program.add_subcommand("populate", "Insert every mx file of a directory into a database");
    auto options = std::make_shared<PopulateOptions>();
    verb->add_option("DIRECTORY", options->directory, "Holds the files MX*.bin")->required();
    addDatabaseOption(*verb, options->databaseUrl);
    verb->add_flag("--replace", options->replace,
                   "Remove the modules that no file of the directory states");
    verb->footer(populateFooter);
    verb->callback([options, choose, &global] {
        choose([options, &global] { return runPopulate(*options, global); });
    });
}

} // namespace mxtool
