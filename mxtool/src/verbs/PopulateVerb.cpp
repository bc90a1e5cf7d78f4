#include "Counted.h"
#include "DatabaseChoice.h"
#include "Diagnostic.h"
#include "OutputFile.h"
#include "Verbs.h"
#include "database/DeviceListing.h"
#include "database/MxDirectory.h"
#include "database/Population.h"

#include <text/ShownText.h>

#include <fmt/format.h>

#include <string>
#include <vector>

namespace mxtool {

namespace {

using devices::database::DeviceDatabase;

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

// Removes the modules missing from the directory; returns a line for each.
std::vector<std::string> removeMissing(const MxDirectory& directory, DeviceDatabase& database)
{
    const auto missing = modulesNotIn(directory, database);
    if (!missing) {
        const std::string reason =
            directory.leftOut != 0 ? "An entry was left out" : "A file does not state its module";
        report({"warning", directory.path,
                reason + ", which may be any in the database: nothing is removed"});
        return {};
    }
    std::vector<std::string> lines;
    for (const auto& module : *missing) {
        lines.push_back(fmt::format("removing {} {}\n", text::forTerminal(module.moduleIdText),
                                    text::forTerminal(module.brandLabelName)));
        database.remove(module.family, module.moduleIdText);
    }
    return lines;
}

ExitCode populateAtOnce(const MxDirectory& directory, bool replace, const GlobalOptions& global,
                        DeviceDatabase& database)
{
    auto transaction = database.beginTransaction();
    const PopulationCount count = populate(directory, database, transaction, global.logLevel);
    std::vector<std::string> removed;
    if (replace) {
        removed = removeMissing(directory, database);
    }
    transaction.commit(); // before the output: a closed pipe must not undo it silently
    if (!global.quiet) {
        const std::string replaced =
            count.replaced != 0 ? fmt::format(", {} replaced", count.replaced) : "";
        writeOutput("-", fmt::format("{}{}: {} inserted{}, {} failed{}\n", fmt::join(removed, ""),
                                     text::forTerminal(database.name()),
                                     counted(count.inserted, "module"), replaced, count.failed,
                                     replace ? fmt::format(", {} removed", removed.size()) : ""));
    }
    return count.failed == 0 ? ExitCode::Done : ExitCode::Findings;
}

ExitCode runPopulate(const PopulateOptions& options, const GlobalOptions& global)
{
    const MxDirectory directory = listMxDirectory(options.directory);
    auto database = openDatabaseForWriting(options.databaseUrl);
    return withDatabase("the database is unchanged", [&] {
        return populateAtOnce(directory, options.replace, global, database);
    });
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
