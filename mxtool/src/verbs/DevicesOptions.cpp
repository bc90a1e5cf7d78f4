#include "verbs/DevicesOptions.h"

#include "DatabaseChoice.h"
#include "verbs/DevicesQuery.h"

#include <fmt/format.h>

namespace mxtool {

namespace {

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

std::string conditionHelp()
{
    std::string text =
        "Fields of --where, compared by = != < <= > >= and, for texts, ~ (contains); "
        "blanks are part of a text, except those in FIELD = TEXT:\n";
    for (const mxmodule::ConditionField& field : mxmodule::conditionFields()) {
        text += fmt::format("  {:<15}  {}\n", field.name, field.meaning);
    }
    return text;
}

} // namespace

CLI::App* addDevicesOptions(CLI::App& program, DevicesOptions& options)
{
    CLI::App& verb =
        *program.add_subcommand("devices", "List, search, export, copy or remove stored modules");
    auto* const id = verb.add_option("MODULE_ID", options.moduleId,
                                     "Show this module's record in full; eight hexadecimal digits");
    addDatabaseOption(verb, options.databaseUrl);
    const auto query = addQueryOptions(verb, options);
    auto* const explain = verb.add_flag("--explain-search", options.isExplained,
                                        "Say how the search is carried out; nothing is listed");
    auto* const toDirectory =
        verb.add_option("--export", options.exportDirectory,
                        "Write the mx files into this directory, named MX and identifier");
    auto* const toDatabase = verb.add_option("--copy-to", options.copyUrl,
                                             "Copy the modules to the database at this URL");
    auto* const removal =
        verb.add_option("--remove", options.removedId, "Remove this module from the database");
    for (auto* const ofQuery : query) {
        id->excludes(ofQuery);
        removal->excludes(ofQuery);
    }
    id->excludes(toDirectory)->excludes(toDatabase);
    removal->excludes(id)->excludes(toDirectory);
    toDatabase->excludes(toDirectory)->excludes(removal);
    explain->excludes(id)->excludes(toDirectory)->excludes(toDatabase)->excludes(removal);
    acceptOneOf(*verb.add_option("--format", options.format, "text (or table), json or csv"),
                {"text", "table", "json", "csv"});
    addCsvOptions(verb, options.csv);
    verb.add_option("-o,--output", options.output, "Write to this file, - for standard output");
    verb.footer(conditionHelp() + devicesFooter);
    return &verb;
}

void checkWords(DevicesOptions& options)
{
    requireCsv(options.csv, options.format);
    if (options.isExplained && options.format == "csv") {
        throw CLI::ValidationError("--explain-search",
                                   "goes with --format text or json, not with csv");
    }
    readQuery(options);
}

} // namespace mxtool
