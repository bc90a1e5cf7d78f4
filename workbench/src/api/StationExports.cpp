#include "api/StationExports.h"

#include "api/CallFailure.h"
#include "http/Status.h"

#include <fmt/format.h>
#include <mxstation/ChannelExport.h>
#include <mxstation/Datasheet.h>
#include <mxstation/ParameterExport.h>
#include <mxstation/StationCheck.h>
#include <mxstation/StationPicture.h>
#include <mxstation/StationReport.h>

namespace workbench {

namespace {

using mxmodule::Fieldbus;

struct StationExport
{
    ExportFormat format;
    const char* suffix; // of the file's name; of a module it follows position and name
    std::string (*content)(const PlannedStation& from);
};

mxstation::ParameterFile parameterFileOf(const PlannedStation& from, Fieldbus fieldbus)
{
    const auto files = parameterFiles(from.plan, fieldbus); // says what is wrong with the plan
    const std::size_t modules = from.plan.modules.size();
    if (from.module == 0 || from.module > modules) {
        throw CallFailure(status::badRequest,
                          fmt::format("module: found {}, expected a position from 1 to {}",
                                      from.module, modules));
    }
    return files[from.module - 1];
}

template <Fieldbus fieldbus>
std::string imageOf(const PlannedStation& from)
{
    const auto file = parameterFileOf(from, fieldbus);
    return {file.bytes.begin(), file.bytes.end()};
}

// The file "station.json" beside those of the modules.
template <Fieldbus fieldbus>
std::string indexOf(const PlannedStation& from)
{
    const auto files = parameterFiles(from.plan, fieldbus);
    return {files.back().bytes.begin(), files.back().bytes.end()};
}

template <Fieldbus fieldbus>
void addParameters(std::vector<StationExport>& all, const std::string& bus, const std::string& of)
{
    using From = const PlannedStation&;
    all.push_back({{"image-" + bus, "Parameter image" + of + ", bytes", true},
                   fieldbus == Fieldbus::Raw ? "-raw.bin" : "-modbus.bin",
                   imageOf<fieldbus>});
    all.push_back({{"images-" + bus + "-json", "Parameter images" + of + ", list of the files"},
                   fieldbus == Fieldbus::Raw ? "-raw.json" : "-modbus.json",
                   indexOf<fieldbus>});
    all.push_back({{"parameters-" + bus + "-text", "Parameters" + of + ", table"},
                   "-parameters.txt",
                   [](From from) { return parametersText(from.plan, fieldbus); }});
    all.push_back({{"parameters-" + bus + "-json", "Parameters" + of + ", JSON"},
                   "-parameters.json",
                   [](From from) { return parametersJson(from.plan, fieldbus); }});
}

void addChannels(std::vector<StationExport>& all)
{
    using From = const PlannedStation&;
    all.push_back({{"channels-text", "Channels, table"}, "-channels.txt", [](From from) {
                       return channelsText(from.plan);
                   }});
    all.push_back({{"channels-csv", "Channels, CSV"}, "-channels.csv", [](From from) {
                       return channelsCsv(from.plan, from.csv);
                   }});
    all.push_back({{"channels-json", "Channels, JSON"}, "-channels.json", [](From from) {
                       return channelsJson(from.plan);
                   }});
    all.push_back({{"channels-st", "Channels, Structured Text"}, ".st", [](From from) {
                       return declarations(from.plan, from.declarations).text;
                   }});
    all.push_back({{"channels-plcopen", "Channels, PLCopen XML"}, ".xml", [](From from) {
                       return plcopenXml(from.plan, from.declarations).text;
                   }});
    all.push_back({{"channels-c", "Channels, header for C and C++"}, ".h", [](From from) {
                       return cHeader(from.plan).text;
                   }});
    all.push_back({{"picture", "Process images, picture"}, ".svg", [](From from) {
                       return stationSvg(from.plan);
                   }});
}

std::vector<StationExport> stationExports()
{
    using From = const PlannedStation&;
    std::vector<StationExport> all;
    addChannels(all);
    addParameters<Fieldbus::Raw>(all, "raw", "");
    addParameters<Fieldbus::Modbus>(all, "modbus", " for Modbus");
    all.push_back({{"datasheet", "Data sheet"}, "-datasheet.html", [](From from) {
                       return mxstation::datasheet(from.plan);
                   }});
    all.push_back(
        {{"station-text", "Row, table"}, ".txt", [](From from) { return stationText(from.plan); }});
    all.push_back(
        {{"station-json", "Row, JSON"}, ".json", [](From from) { return stationJson(from.plan); }});
    all.push_back({{"check-json", "Findings, JSON"}, "-check.json", [](From from) {
                       return checkOf(from.plan).json();
                   }});
    return all;
}

const std::vector<StationExport>& allStationExports()
{
    static const std::vector<StationExport> all = stationExports();
    return all;
}

// Without position and name of a module: of the whole station.
std::string fileNameOf(const StationExport& one, const PlannedStation& station,
                       const std::string& name)
{
    return one.format.isOfModule ? fmt::format("{}-{}-{}", name, station.module,
                                               station.plan.modules[station.module - 1].name)
                                 : name;
}

} // namespace

std::vector<ExportFormat> stationExportFormats()
{
    std::vector<ExportFormat> formats;
    for (const StationExport& one : allStationExports()) {
        formats.push_back(one.format);
    }
    return formats;
}

Response stationExport(const PlannedStation& station, const std::string& format,
                       const std::string& name)
{
    for (const StationExport& one : allStationExports()) {
        if (one.format.format == format) {
            const std::string content = one.content(station);
            return exportedFile(fileNameOf(one, station, name), one.suffix, content);
        }
    }
    rejectFormat(stationExportFormats(), format);
}

} // namespace workbench
