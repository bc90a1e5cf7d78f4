#include "api/ModuleExports.h"

#include <mxmodule/Datasheet.h>
#include <mxmodule/Explanation.h>

namespace workbench {

namespace {

using mxmodule::Configuration;
using mxmodule::Fieldbus;

std::string stringOf(const std::vector<char>& bytes)
{
    return {bytes.begin(), bytes.end()};
}

template <Fieldbus fieldbus>
Configuration configurationOf(const ConfiguredModule& from)
{
    return from.module.configuration(from.image, fieldbus);
}

struct ModuleExport
{
    ExportFormat format;
    const char* suffix; // of the file's name
    std::string (*content)(const ConfiguredModule& from);
};

template <Fieldbus fieldbus>
void addConfigurations(std::vector<ModuleExport>& all, const std::string& bus,
                       const std::string& of)
{
    using From = const ConfiguredModule&;
    all.push_back({{"image-" + bus, "Parameter image" + of + ", bytes"}, ".bin", [](From from) {
                       return stringOf(configurationOf<fieldbus>(from).bytes());
                   }});
    all.push_back({{"parameters-" + bus + "-text", "Parameters" + of + ", table"},
                   "-parameters.txt",
                   [](From from) { return configurationOf<fieldbus>(from).text(); }});
    all.push_back({{"parameters-" + bus + "-csv", "Parameters" + of + ", CSV"},
                   "-parameters.csv",
                   [](From from) { return configurationOf<fieldbus>(from).csv(from.csv); }});
    all.push_back({{"parameters-" + bus + "-json", "Parameters" + of + ", JSON"},
                   "-parameters.json",
                   [](From from) { return configurationOf<fieldbus>(from).json(); }});
}

void addChannelForms(std::vector<ModuleExport>& all)
{
    using From = const ConfiguredModule&;
    all.push_back({{"channels-text", "Channels, table"}, "-channels.txt", [](From from) {
                       return from.module.channelMap().text();
                   }});
    all.push_back({{"channels-csv", "Channels, CSV"}, "-channels.csv", [](From from) {
                       return from.module.channelMap().csv(from.csv);
                   }});
    all.push_back({{"channels-json", "Channels, JSON"}, "-channels.json", [](From from) {
                       return from.module.channelMap().json();
                   }});
    all.push_back({{"channels-st", "Channels, Structured Text"}, ".st", [](From from) {
                       return from.module.channelMap().declarations();
                   }});
    all.push_back({{"channels-svg", "Process image, picture"}, ".svg", [](From from) {
                       return from.module.channelMap().svg();
                   }});
}

std::vector<ModuleExport> moduleExports()
{
    using From = const ConfiguredModule&;
    std::vector<ModuleExport> all;
    addConfigurations<Fieldbus::Raw>(all, "raw", "");
    addConfigurations<Fieldbus::Modbus>(all, "modbus", " for Modbus");
    all.push_back({{"values", "Values to edit, YAML"}, "-values.yaml", [](From from) {
                       return configurationOf<Fieldbus::Raw>(from).valuesFile();
                   }});
    addChannelForms(all);
    all.push_back(
        {{"device-text", "Device, table"}, ".txt", [](From from) { return from.module.text(); }});
    all.push_back(
        {{"device-json", "Device, JSON"}, ".json", [](From from) { return from.module.json(); }});
    all.push_back({{"explanation", "Explained bytes"}, "-bytes.html", [](From from) {
                       return mxmodule::Explanation(from.file).html();
                   }});
    all.push_back({{"datasheet", "Data sheet"}, "-datasheet.html", [](From from) {
                       return mxmodule::datasheet(from.module);
                   }});
    all.push_back(
        {{"mx-file", "mx file"}, ".bin", [](From from) { return stringOf(from.file.bytes()); }});
    return all;
}

const std::vector<ModuleExport>& allModuleExports()
{
    static const std::vector<ModuleExport> all = moduleExports();
    return all;
}

} // namespace

std::vector<ExportFormat> moduleExportFormats()
{
    std::vector<ExportFormat> formats;
    for (const ModuleExport& one : allModuleExports()) {
        formats.push_back(one.format);
    }
    return formats;
}

Response moduleExport(const ConfiguredModule& configured, const std::string& format)
{
    for (const ModuleExport& one : allModuleExports()) {
        if (one.format.format == format) {
            return exportedFile("MX" + configured.module.moduleId(), one.suffix,
                                one.content(configured));
        }
    }
    rejectFormat(moduleExportFormats(), format);
}

} // namespace workbench
