#include "CommandLineOptions.h"
#include "Diagnostic.h"
#include "InputFile.h"
#include "OutputFile.h"
#include "Verbs.h"
#include "groups/GroupListing.h"

#include <text/Counted.h>

#include <fmt/format.h>

namespace mxtool {

namespace {

using mxauthor::ReadGroups;

constexpr const char* groupsFooter = R"(Example:
  $ mxtool groups examples/modules/MX0001.bin
  Group  Name             Payload at      Size
  0000   header           0x000004 (4)    4
  0001   module identity  0x00000e (14)   17
  0020   catalogue        0x000025 (37)   168
  0040   component        0x0000d3 (211)  48
  0011   data sizes       0x000109 (265)  40
)";

struct GroupsOptions
{
    std::string file;
    std::string format = "text";
    CsvOptions csv;
    std::string output = "-";
};

std::string formatted(const ReadGroups& read, const GroupsOptions& options, std::size_t fileSize)
{
    if (options.format == "json") {
        return groupsJson(read, inputName(options.file), fileSize);
    }
    return options.format == "csv" ? groupsCsv(read, options.csv.style()) : groupsText(read);
}

// The byte 0xFF after the bytes of the file is what the device parser reads there.
ReadGroups groupsIn(std::vector<char> bytes)
{
    bytes.push_back('\xFF');
    return mxauthor::readWholeGroups(bytes);
}

ExitCode listGroupsOf(const GroupsOptions& options)
{
    const mxmodule::ModuleFile input = loadModuleFile(options.file);
    const std::size_t fileSize = input.bytes().size();
    const ReadGroups read = groupsIn(input.bytes());
    const std::size_t framedSize = read.file.tail.place.offset;
    writeOutput(options.output, formatted(read, options, fileSize));
    const std::string place = input.placeOf(framedSize);
    if (read.failure) {
        report({Severity::Error, place, *read.failure});
        return ExitCode::Input;
    }
    if (read.file.groups.empty()) {
        report({Severity::Error, place,
                fmt::format("No group found in {}, expected the groups of an mx file",
                            text::counted(fileSize, "byte"))});
        return ExitCode::Input;
    }
    if (framedSize < fileSize) {
        report({Severity::Note, place,
                fmt::format("{} after the last group {} not read",
                            text::counted(fileSize - framedSize, "byte"),
                            fileSize - framedSize == 1 ? "is" : "are")});
    }
    return ExitCode::Done;
}

} // namespace

void addGroupsVerb(CLI::App& program, const GlobalOptions& /*options*/, const VerbChoice& choose)
{
    CLI::App* verb = program.add_subcommand("groups", "List the groups of an mx file");
    auto options = std::make_shared<GroupsOptions>();
    verb->add_option("FILE", options->file, "The mx file or its text form, - for standard input")
        ->required();
    acceptOneOf(*verb->add_option("--format", options->format, "text, json or csv"),
                {"text", "json", "csv"});
    addCsvOptions(*verb, options->csv);
    verb->add_option("-o,--output", options->output, "Write to this file, - for standard output")
        ->type_name("FILE");
    verb->footer(groupsFooter);
    verb->callback([options, choose] {
        requireCsv(options->csv, options->format);
        choose([options] { return listGroupsOf(*options); });
    });
}

} // namespace mxtool
