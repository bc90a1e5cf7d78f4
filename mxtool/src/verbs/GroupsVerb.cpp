#include "CommandLineOptions.h"
#include "Counted.h"
#include "DeviceJson.h"
#include "Diagnostic.h"
#include "InputFile.h"
#include "ModuleFile.h"
#include "OutputFile.h"
#include "TextTable.h"
#include "Verbs.h"

#include <devices/parser/mx/HexText.h>
#include <mxauthor/MxFile.h>
#include <mxformat/Groups.h>
#include <text/Utf8.h>

#include <fmt/format.h>

namespace mxtool {

namespace {

using devices::parser::mx::u16AsHex;
using mxauthor::Group;
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

std::uint32_t payloadOffset(const Group& group)
{
    return group.place.offset + mxformat::groupHeaderSize;
}

std::uint32_t payloadSize(const Group& group)
{
    return group.place.length - mxformat::groupOverhead;
}

std::string listingText(const ReadGroups& read)
{
    TextTable table({"Group", "Name", "Payload at", "Size"});
    for (const Group& group : read.file.groups) {
        table.add({u16AsHex(group.id), mxformat::groupName(group.id),
                   fmt::format("{0:#08x} ({0})", payloadOffset(group)),
                   std::to_string(payloadSize(group))});
    }
    return table.text();
}

std::string listingCsv(const ReadGroups& read, const CsvStyle& style)
{
    std::vector<CsvRow> rows = {{"group", "name", "offset", "size"}};
    for (const Group& group : read.file.groups) {
        rows.push_back({u16AsHex(group.id), mxformat::groupName(group.id),
                        std::to_string(payloadOffset(group)), std::to_string(payloadSize(group))});
    }
    return csvText(rows, style);
}

Json groupJson(const Group& group)
{
    return {{"id", u16AsHex(group.id)},
            {"name", mxformat::groupName(group.id)},
            {"offset", payloadOffset(group)},
            {"size", payloadSize(group)}};
}

std::string listingJson(const ReadGroups& read, const std::string& file, std::size_t fileSize)
{
    return jsonText({{"schema", jsonSchema("mxtool.groups", 1)},
                     {"file", text::toUtf8(file)},
                     {"size", fileSize},
                     {"groups", listJson(read.file.groups, groupJson)},
                     {"failure", read.failure ? Json(*read.failure) : Json()}});
}

std::string formatted(const ReadGroups& read, const GroupsOptions& options, std::size_t fileSize)
{
    if (options.format == "json") {
        return listingJson(read, inputName(options.file), fileSize);
    }
    return options.format == "csv" ? listingCsv(read, options.csv.style()) : listingText(read);
}

ExitCode listGroupsOf(const GroupsOptions& options)
{
    const ModuleFile input(options.file);
    const std::size_t fileSize = input.bytes().size();
    const ReadGroups read = mxauthor::readWholeGroups(input.loadedBytes());
    const std::size_t framedSize = read.file.tail.place.offset;
    writeOutput(options.output, formatted(read, options, fileSize));
    const std::string place = input.placeOf(framedSize);
    if (read.failure) {
        report({"error", place, *read.failure});
        return ExitCode::Input;
    }
    if (read.file.groups.empty()) {
        report({"error", place,
                fmt::format("No group found in {}, expected the groups of an mx file",
                            counted(fileSize, "byte"))});
        return ExitCode::Input;
    }
    if (framedSize < fileSize) {
        report({"note", place,
                fmt::format("{} after the last group {} not read",
                            counted(fileSize - framedSize, "byte"),
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
