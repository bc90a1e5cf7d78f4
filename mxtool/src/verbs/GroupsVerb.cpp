#include "CallWords.h"
#include "Counted.h"
#include "CsvOptions.h"
#include "DeviceJson.h"
#include "Diagnostic.h"
#include "GroupListing.h"
#include "InputFile.h"
#include "ModuleFile.h"
#include "OutputFile.h"
#include "ShownText.h"
#include "TextTable.h"
#include "Verbs.h"

#include <devices/parser/mx/HexText.h>
#include <mxformat/Groups.h>

#include <fmt/format.h>

namespace mxtool {

namespace {

using devices::parser::mx::GroupPlace;
using devices::parser::mx::u16AsHex;

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

std::string listingText(const GroupListing& listing)
{
    TextTable table({"Group", "Name", "Payload at", "Size"});
    for (const GroupPlace& group : listing.groups) {
        table.add({u16AsHex(group.id), mxformat::groupName(group.id),
                   fmt::format("{0:#08x} ({0})", group.payloadOffset),
                   std::to_string(group.payloadSize)});
    }
    return table.text();
}

std::string listingCsv(const GroupListing& listing, const CsvStyle& style)
{
    std::vector<CsvRow> rows = {{"group", "name", "offset", "size"}};
    for (const GroupPlace& group : listing.groups) {
        rows.push_back({u16AsHex(group.id), mxformat::groupName(group.id),
                        std::to_string(group.payloadOffset), std::to_string(group.payloadSize)});
    }
    return csvText(rows, style);
}

std::string listingJson(const GroupListing& listing, const std::string& file, std::size_t fileSize)
{
    Json groups = Json::array();
    for (const GroupPlace& group : listing.groups) {
        groups.push_back({{"id", u16AsHex(group.id)},
                          {"name", mxformat::groupName(group.id)},
                          {"offset", group.payloadOffset},
                          {"size", group.payloadSize}});
    }
    return jsonText({{"schema", jsonSchema("mxtool.groups", 1)},
                     {"file", toUtf8(file)},
                     {"size", fileSize},
                     {"groups", groups},
                     {"failure", listing.failure.empty() ? Json() : Json(listing.failure)}});
}

std::string formatted(const GroupListing& listing, const GroupsOptions& options,
                      std::size_t fileSize)
{
    if (options.format == "json") {
        return listingJson(listing, inputName(options.file), fileSize);
    }
    return options.format == "csv" ? listingCsv(listing, options.csv.style())
                                   : listingText(listing);
}

ExitCode listGroupsOf(const GroupsOptions& options)
{
    const ModuleFile input(options.file);
    const std::size_t fileSize = input.bytes().size();
    const GroupListing listing = listGroups(input.loadedBytes());
    writeOutput(options.output, formatted(listing, options, fileSize));
    const std::string place = input.placeOf(listing.framedSize);
    if (!listing.failure.empty()) {
        report({"error", place, listing.failure, ""});
        return ExitCode::Input;
    }
    if (listing.groups.empty()) {
        report({"error", place,
                fmt::format("No group found in {}, expected the groups of an mx file",
                            counted(fileSize, "byte")),
                ""});
        return ExitCode::Input;
    }
    if (listing.framedSize < fileSize) {
        report({"note", place,
                fmt::format("{} after the last group {} not read",
                            counted(fileSize - listing.framedSize, "byte"),
                            fileSize - listing.framedSize == 1 ? "is" : "are"),
                ""});
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
