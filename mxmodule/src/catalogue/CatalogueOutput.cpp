#include "catalogue/CatalogueOutput.h"

#include <devices/parser/mx/HexText.h>
#include <fmt/format.h>
#include <text/Beginning.h>
#include <text/Counted.h>
#include <text/Csv.h>
#include <text/FileNamePart.h>
#include <text/JsonText.h>
#include <text/ShownText.h>
#include <text/TextTable.h>
#include <text/Utf8.h>

namespace mxmodule {

namespace {

using devices::parser::mx::bufferAsHex;

std::vector<std::string> cellsOf(const CatalogueEntry& module)
{
    return {module.moduleId,
            module.family,
            module.label,
            std::to_string(module.inputSize),
            std::to_string(module.outputSize),
            std::to_string(module.parameterSize),
            std::to_string(module.fileSize)};
}

} // namespace

std::string exportName(const CatalogueEntry& module)
{
    return "MX" + text::fileNamePart(module.moduleId) +
           (module.family == "kv38" ? "" : "." + text::fileNamePart(module.family)) + ".bin";
}

std::string catalogueTable(const std::vector<CatalogueEntry>& modules)
{
    text::TextTable table({"Module", "Family", "Label", "In", "Out", "Parameters", "File"});
    for (const CatalogueEntry& module : modules) {
        table.add(cellsOf(module));
    }
    return table.text();
}

std::string catalogueCsv(const std::vector<CatalogueEntry>& modules, const CsvStyle& style)
{
    std::vector<text::CsvRow> rows = {
        {"module_id", "family", "label", "in_bytes", "out_bytes", "parameter_bytes", "file_bytes"}};
    for (const CatalogueEntry& module : modules) {
        rows.push_back(cellsOf(module));
    }
    return text::csvText(rows, style.separator, style.byteOrderMark);
}

std::vector<Finding> withoutFile(const std::vector<CatalogueEntry>& modules)
{
    constexpr std::size_t most = 20;
    std::vector<std::string> ids;
    for (const CatalogueEntry& module : modules) {
        if (module.fileSize == 0) {
            ids.push_back(text::forTerminal(module.moduleId));
        }
    }
    if (ids.empty()) {
        return {};
    }
    const std::size_t count = ids.size();
    return {{Severity::Warning, "",
             fmt::format("{} stored without the mx file: {}",
                         count == 1 ? "1 module was" : fmt::format("{} modules were", count),
                         text::beginningOfList(ids, most, ", ", " ")),
             "mxtool populate DIRECTORY stores the files; a host stores their bytes in "
             "mxFileData of the record"}};
}

text::Json recordJson(const CatalogueRecord& record)
{
    return {{"module_id", text::toUtf8(record.module.moduleId)},
            {"family", text::toUtf8(record.module.family)},
            {"label", record.module.label},
            {"in_bytes", record.module.inputSize},
            {"out_bytes", record.module.outputSize},
            {"parameter_block", bufferAsHex(record.parameterBlock)},
            {"file_bytes", record.module.fileSize}};
}

std::string CatalogueRecord::text() const
{
    text::TextTable table({"Field", "Value"});
    table.add({"module identifier", module.moduleId});
    table.add({"family", module.family});
    table.add({"label", module.label});
    table.add({"input", text::counted(module.inputSize, "byte")});
    table.add({"output", text::counted(module.outputSize, "byte")});
    table.add(
        {"parameter block", fmt::format("{}: {}", text::counted(parameterBlock.size(), "byte"),
                                        bufferAsHex(parameterBlock))});
    table.add({"mx file", text::counted(module.fileSize, "byte")});
    table.add({"host data", text::counted(hostData.size(), "byte")});
    return table.text();
}

std::string CatalogueRecord::json() const
{
    return text::jsonText(
        {{"schema", text::jsonSchema("mxtool.device-record", 1)}, {"device", recordJson(*this)}});
}

} // namespace mxmodule
