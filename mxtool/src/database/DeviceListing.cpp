#include "database/DeviceListing.h"

#include "Counted.h"
#include "Csv.h"
#include "DeviceJson.h"
#include "TextTable.h"

#include <devices/parser/mx/HexText.h>
#include <text/Utf8.h>

#include <fmt/format.h>

namespace mxtool {

namespace {

using devices::database::DeviceProperties;
using devices::database::ModuleSummary;
using devices::parser::mx::bufferAsHex;

std::vector<std::string> cellsOf(const ModuleSummary& module)
{
    return {module.moduleIdText,
            module.family,
            module.brandLabelName,
            std::to_string(module.inDataSize),
            std::to_string(module.outDataSize),
            std::to_string(module.parameterBlockSize),
            std::to_string(module.mxFileSize)};
}

Json jsonOf(const DeviceProperties& record)
{
    return {{"module_id", text::toUtf8(record.moduleIdText)},
            {"family", text::toUtf8(record.family)},
            {"label", text::toUtf8(record.brandLabelName)},
            {"in_bytes", record.inDataSize},
            {"out_bytes", record.outDataSize},
            {"parameter_block", bufferAsHex(*record.defaultParameterBlock)},
            {"file_bytes", summaryOf(record).mxFileSize}};
}

} // namespace

ModuleSummary summaryOf(const DeviceProperties& record)
{
    ModuleSummary summary;
    summary.family = record.family;
    summary.moduleIdText = record.moduleIdText;
    summary.brandLabelName = record.brandLabelName;
    summary.inDataSize = record.inDataSize;
    summary.outDataSize = record.outDataSize;
    summary.parameterBlockSize = record.defaultParameterBlock->size();
    // A stored file has one byte more than the file on disk (0xFF).
    summary.mxFileSize = record.mxFileData->empty() ? 0 : record.mxFileData->size() - 1;
    return summary;
}

std::string moduleTable(const std::vector<ModuleSummary>& modules)
{
    TextTable table({"Module", "Family", "Label", "In", "Out", "Parameters", "File"});
    for (const ModuleSummary& module : modules) {
        table.add(cellsOf(module));
    }
    return table.text();
}

std::string moduleCsv(const std::vector<ModuleSummary>& modules, const CsvStyle& style)
{
    std::vector<CsvRow> rows = {
        {"module_id", "family", "label", "in_bytes", "out_bytes", "parameter_bytes", "file_bytes"}};
    for (const ModuleSummary& module : modules) {
        rows.push_back(cellsOf(module));
    }
    return csvText(rows, style);
}

std::string moduleListJson(const std::vector<ModuleSummary>& modules,
                           devices::database::DeviceDatabase& database)
{
    Json list = Json::array();
    database.visit(modules,
                   [&](const DeviceProperties& record) { list.push_back(jsonOf(record)); });
    return jsonText({{"schema", jsonSchema("mxtool.devices", 1)}, {"devices", list}});
}

std::string recordText(const DeviceProperties& record)
{
    TextTable table({"Field", "Value"});
    table.add({"module identifier", record.moduleIdText});
    table.add({"family", record.family});
    table.add({"label", record.brandLabelName});
    table.add({"input", counted(record.inDataSize, "byte")});
    table.add({"output", counted(record.outDataSize, "byte")});
    table.add({"parameter block",
               fmt::format("{}: {}", counted(record.defaultParameterBlock->size(), "byte"),
                           bufferAsHex(*record.defaultParameterBlock))});
    table.add({"mx file", counted(summaryOf(record).mxFileSize, "byte")});
    table.add({"host data", counted(record.hostBytes->size(), "byte")});
    return table.text();
}

std::string recordJson(const DeviceProperties& record)
{
    return jsonText(
        {{"schema", jsonSchema("mxtool.device-record", 1)}, {"device", jsonOf(record)}});
}

} // namespace mxtool
