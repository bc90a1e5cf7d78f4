#include "CommandLineOptions.h"
#include "Counted.h"
#include "DatabaseChoice.h"
#include "Diagnostic.h"
#include "OutputFile.h"
#include "Verbs.h"
#include "database/DeviceListing.h"
#include "database/ModuleFilter.h"
#include "database/Transfer.h"

#include <text/ShownText.h>

#include <fmt/format.h>

#include <algorithm>

namespace mxtool {

namespace {

using devices::database::DeviceDatabase;
using devices::database::ModuleQuery;
using devices::database::ModuleSummary;

constexpr const char* devicesFooter = R"(
Example:
  $ mxtool devices --db sqlite:/tmp/devices.sqlite 5a060602
  Field              Value
  module identifier  5a060602
  family             kv38
  label              2 counters 32 bit
  input              22 bytes
  output             10 bytes
  parameter block    25 bytes: 02 ee 6b 28 00 ff ff ff ff ff ff fd 98 ee 6b 28 00 ff ff ff ff ff ff fd 99
  mx file            975 bytes
  host data          0 bytes
)";

struct DevicesOptions
{
    std::string moduleId;
    std::string databaseUrl;
    std::string search;
    std::vector<std::string> where;
    std::string exportDirectory; // empty: none
    std::string copyUrl;         // empty: none
    std::string removedId;       // empty: none
    std::string format = "text";
    CsvOptions csv;
    std::string output = "-";
    ModuleQuery query; // from --search and --where
};

std::string knownIdentifiers(DeviceDatabase& database)
{
    constexpr std::size_t most = 20;
    std::vector<std::string> ids;
    for (const ModuleSummary& module : database.search({})) {
        ids.push_back(module.moduleIdText);
    }
    if (ids.empty()) {
        return "the database holds no module";
    }
    return "it holds " + beginningOfList(ids, most, ", ", " ");
}

ExitCode reportUnknown(DeviceDatabase& database, const std::string& moduleId)
{
    report({"error", "",
            fmt::format("Module {} is not in the database, expected eight hexadecimal digits "
                        "of one that is",
                        moduleId),
            knownIdentifiers(database)});
    return ExitCode::Findings;
}

// Modules stored without content, by a host or the first database version, cannot be found by their
// words.
void warnOfUnknownContent(DeviceDatabase& database, const ModuleQuery& query)
{
    if (query.words.empty() && query.conditions.empty()) {
        return;
    }
    const auto all = database.search({});
    const auto unknown = static_cast<std::size_t>(std::count_if(
        all.begin(), all.end(), [](const ModuleSummary& module) { return !module.hasContent; }));
    if (unknown != 0) {
        report({"warning", "",
                fmt::format("The catalogue does not have the content of {}: searches may not "
                            "find it",
                            counted(unknown, "module")),
                "mxtool populate DIRECTORY stores it"});
    }
}

ExitCode showAll(DeviceDatabase& database, const DevicesOptions& options)
{
    warnOfUnknownContent(database, options.query);
    const auto modules = database.search(options.query);
    std::string text;
    if (options.format == "json") {
        text = moduleListJson(modules, database);
    } else {
        text = options.format == "csv" ? moduleCsv(modules, options.csv.style())
                                       : moduleTable(modules);
    }
    writeOutput(options.output, text);
    return reportWithoutFile(modules) == 0 ? ExitCode::Done : ExitCode::Findings;
}

ExitCode showOne(DeviceDatabase& database, const DevicesOptions& options)
{
    const auto record = database.find(options.moduleId);
    if (!record) {
        return reportUnknown(database, options.moduleId);
    }
    std::string text = recordText(*record);
    if (options.format == "json") {
        text = recordJson(*record);
    } else if (options.format == "csv") {
        text = moduleCsv({summaryOf(*record)}, options.csv.style());
    }
    writeOutput(options.output, text);
    return reportWithoutFile({summaryOf(*record)}) == 0 ? ExitCode::Done : ExitCode::Findings;
}

ExitCode exportAll(DeviceDatabase& database, const DevicesOptions& options, bool quiet)
{
    const auto modules = database.search(options.query);
    const std::size_t written = exportModules(modules, database, options.exportDirectory);
    const std::size_t missing = reportWithoutFile(modules);
    if (!quiet) {
        writeOutput("-", fmt::format("{} written to {}\n", counted(written, "module"),
                                     text::forTerminal(options.exportDirectory)));
    }
    return missing == 0 && written == modules.size() ? ExitCode::Done : ExitCode::Findings;
}

ExitCode copyAll(DeviceDatabase& database, const DevicesOptions& options, bool quiet)
{
    DeviceDatabase target = openDatabaseForWriting(options.copyUrl);
    const std::size_t copied = copyModules(database.search(options.query), database, target);
    if (!quiet) {
        writeOutput("-", fmt::format("{} copied to {}\n", counted(copied, "module"),
                                     text::forTerminal(target.name())));
    }
    return ExitCode::Done;
}

ExitCode removeOne(DeviceDatabase& database, const DevicesOptions& options, bool quiet)
{
    if (!database.remove(options.removedId)) {
        return reportUnknown(database, options.removedId);
    }
    if (!quiet) {
        writeOutput("-", fmt::format("{} removed\n", text::forTerminal(options.removedId)));
    }
    return ExitCode::Done;
}

ExitCode devices(const DevicesOptions& options, bool quiet)
{
    auto database = openExistingDatabase(options.databaseUrl);
    return withDatabase("", [&] {
        if (!options.removedId.empty()) {
            return removeOne(database, options, quiet);
        }
        if (!options.exportDirectory.empty()) {
            return exportAll(database, options, quiet);
        }
        if (!options.copyUrl.empty()) {
            return copyAll(database, options, quiet);
        }
        return options.moduleId.empty() ? showAll(database, options) : showOne(database, options);
    });
}

// Reads --search and --where. Throws `CLI::ValidationError`.
void readQuery(DevicesOptions& options)
{
    options.query.words = searchWords(options.search);
    for (const std::string& condition : options.where) {
        options.query.conditions.push_back(moduleCondition(condition));
    }
}

void addOptions(CLI::App& verb, DevicesOptions& options)
{
    auto* const id = verb.add_option("MODULE_ID", options.moduleId,
                                     "Show this module's record in full; eight hexadecimal digits");
    addDatabaseOption(verb, options.databaseUrl);
    auto* const search =
        verb.add_option("--search", options.search,
                        "Only modules with all of these words, separated by blanks, in label, "
                        "order code or the names of channels and parameters");
    auto* const where = verb.add_option("--where", options.where,
                                        "Only modules with this property, such as in_bytes>4; may "
                                        "be given several times")
                            ->expected(1)
                            ->take_all();
    auto* const toDirectory =
        verb.add_option("--export", options.exportDirectory,
                        "Write the mx files into this directory, named MX and identifier");
    auto* const toDatabase = verb.add_option("--copy-to", options.copyUrl,
                                             "Copy the modules to the database at this URL");
    auto* const removal =
        verb.add_option("--remove", options.removedId, "Remove this module from the database");
    id->excludes(search)->excludes(where)->excludes(toDirectory)->excludes(toDatabase);
    removal->excludes(id)->excludes(search)->excludes(where)->excludes(toDirectory);
    toDatabase->excludes(toDirectory)->excludes(removal);
    acceptOneOf(*verb.add_option("--format", options.format, "text (or table), json or csv"),
                {"text", "table", "json", "csv"});
    addCsvOptions(verb, options.csv);
    verb.add_option("-o,--output", options.output, "Write to this file, - for standard output");
}

} // namespace

void addDevicesVerb(CLI::App& program, const GlobalOptions& global, const VerbChoice& choose)
{
    CLI::App* verb =
        program.add_subcommand("devices", "List, search, export, copy or remove stored modules");
    auto options = std::make_shared<DevicesOptions>();
    addOptions(*verb, *options);
    verb->footer(conditionHelp() + devicesFooter);
    verb->callback([options, choose, &global] {
        requireCsv(options->csv, options->format);
        readQuery(*options);
        choose([options, &global] { return devices(*options, global.quiet); });
    });
}

} // namespace mxtool
