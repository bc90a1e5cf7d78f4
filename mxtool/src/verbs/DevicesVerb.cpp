#include "Csv.h"
#include "DatabaseChoice.h"
#include "DeviceJson.h"
#include "Diagnostic.h"
#include "OutputFile.h"
#include "ShownText.h"
#include "TextTable.h"
#include "Verbs.h"

#include <devices/parser/mx/HexText.h>

#include <fmt/format.h>

namespace mxtool {

namespace {

using devices::database::DeviceProperties;
using devices::parser::mx::bufferAsHex;

constexpr const char* footer = R"(Example:
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
    std::string format = "text";
    std::string output = "-";
};

// A stored file has one byte more than the file on disk.
std::size_t fileSize(const DeviceProperties& record)
{
    return record.mxFileData->empty() ? 0 : record.mxFileData->size() - 1;
}

std::vector<std::string> columnsOf(const DeviceProperties& record)
{
    return {record.moduleIdText,
            record.family,
            record.brandLabelName,
            std::to_string(record.inDataSize),
            std::to_string(record.outDataSize),
            std::to_string(record.defaultParameterBlock->size()),
            std::to_string(fileSize(record))};
}

Json recordJson(const DeviceProperties& record)
{
    return {{"module_id", toUtf8(record.moduleIdText)},
            {"family", toUtf8(record.family)},
            {"label", toUtf8(record.brandLabelName)},
            {"in_bytes", record.inDataSize},
            {"out_bytes", record.outDataSize},
            {"parameter_block", bufferAsHex(*record.defaultParameterBlock)},
            {"file_bytes", fileSize(record)}};
}

std::string tableText(const std::vector<DeviceProperties>& records)
{
    TextTable table({"Module", "Family", "Label", "In", "Out", "Parameters", "File"});
    for (const DeviceProperties& record : records) {
        table.add(columnsOf(record));
    }
    return table.text();
}

std::string tableCsv(const std::vector<DeviceProperties>& records)
{
    std::string lines = csvLine(
        {"module_id", "family", "label", "in_bytes", "out_bytes", "parameter_bytes", "file_bytes"});
    for (const DeviceProperties& record : records) {
        lines += csvLine(columnsOf(record));
    }
    return lines;
}

std::string listJson(const std::vector<DeviceProperties>& records)
{
    Json list = Json::array();
    for (const DeviceProperties& record : records) {
        list.push_back(recordJson(record));
    }
    return jsonText({{"schema", jsonSchema("mxtool.devices", 1)}, {"devices", list}});
}

std::string recordText(const DeviceProperties& record)
{
    TextTable table({"Field", "Value"});
    table.add({"module identifier", record.moduleIdText});
    table.add({"family", record.family});
    table.add({"label", record.brandLabelName});
    table.add({"input", fmt::format("{} bytes", record.inDataSize)});
    table.add({"output", fmt::format("{} bytes", record.outDataSize)});
    table.add({"parameter block", fmt::format("{} bytes: {}", record.defaultParameterBlock->size(),
                                              bufferAsHex(*record.defaultParameterBlock))});
    table.add({"mx file", fmt::format("{} bytes", fileSize(record))});
    table.add({"host data", fmt::format("{} bytes", record.hostBytes->size())});
    return table.text();
}

std::string knownIdentifiers(const std::vector<DeviceProperties>& records)
{
    std::vector<std::string> ids;
    ids.reserve(records.size());
    for (const DeviceProperties& record : records) {
        ids.push_back(record.moduleIdText);
    }
    return records.empty() ? "the database holds no module"
                           : fmt::format("it holds {}", fmt::join(ids, ", "));
}

ExitCode showAll(devices::database::DeviceDatabase& database, const DevicesOptions& options)
{
    const auto records = database.list();
    std::string text = options.format == "json" ? listJson(records) : tableText(records);
    if (options.format == "csv") {
        text = tableCsv(records);
    }
    writeOutput(options.output, text);
    return ExitCode::Done;
}

ExitCode showOne(devices::database::DeviceDatabase& database, const DevicesOptions& options)
{
    const auto record = database.find(options.moduleId);
    if (!record) {
        report({"error", "",
                fmt::format("Module {} is not in the database, expected eight hexadecimal digits "
                            "of one that is",
                            options.moduleId),
                knownIdentifiers(database.list())});
        return ExitCode::Findings;
    }
    std::string text = recordText(*record);
    if (options.format == "json") {
        text = jsonText(
            {{"schema", jsonSchema("mxtool.device-record", 1)}, {"device", recordJson(*record)}});
    } else if (options.format == "csv") {
        text = tableCsv({*record});
    }
    writeOutput(options.output, text);
    return ExitCode::Done;
}

ExitCode showDevices(const DevicesOptions& options)
{
    auto database = openExistingDatabase(options.databaseUrl);
    try {
        return options.moduleId.empty() ? showAll(database, options) : showOne(database, options);
    } catch (const Failure&) {
        throw;
    } catch (const std::runtime_error& failure) {
        throw Failure(ExitCode::Output, {"error", "", failure.what(), ""});
    }
}

} // namespace

void addDevicesVerb(CLI::App& program, const GlobalOptions& /*options*/, const VerbChoice& choose)
{
    CLI::App* verb = program.add_subcommand("devices", "List the modules of a device database");
    auto options = std::make_shared<DevicesOptions>();
    verb->add_option("MODULE_ID", options->moduleId,
                     "Show this module's record in full; eight hexadecimal digits");
    verb->add_option("--db", options->databaseUrl,
                     "Database URL, sqlite:PATH; without it the one of DEVICE_DATABASE_URL, else "
                     "sqlite:devices.sqlite")
        ->type_name("URL");
    verb->add_option("--format", options->format, "text, json or csv")
        ->check(CLI::IsMember({"text", "json", "csv"}));
    verb->add_option("-o,--output", options->output, "Write to this file, - for standard output")
        ->type_name("FILE");
    verb->footer(footer);
    verb->callback([options, choose] { choose([options] { return showDevices(*options); }); });
}

} // namespace mxtool
