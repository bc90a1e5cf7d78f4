#include "CommandLineOptions.h"
#include "Diagnostic.h"
#include "OutputFile.h"
#include "Verbs.h"
#include "station/StationChoice.h"

#include <mxstation/ParameterExport.h>

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/ShownText.h>

#include <filesystem>

namespace mxtool {

namespace {

constexpr const char* stationConfigFooter = R"(Example:
  $ mxtool station config examples/stations/smallest.yaml
  smallest

  Position  Name    Module    Bytes  From byte  Parameter image
  1         MX0108  5a010108  2      0          01 00
  2         MX0204  5a020204  10     0          00 00 64 00 64 00 64 00 64 00
  3         MX0302  5a030302  6      0          01 00 00 01 00 00

  Every parameter has its default.
)";

struct StationConfigOptions
{
    StationChoice station;
    std::string fieldbus = "raw";
    std::string format = "text";
    std::string output = "-";
    std::string directory; // empty: one list
};

ExitCode writeFiles(const StationConfigOptions& options, const mxstation::Plan& plan,
                    mxmodule::Fieldbus fieldbus, bool quiet)
{
    std::vector<Output> outputs;
    for (const mxstation::ParameterFile& file : parameterFiles(plan, fieldbus)) {
        const auto path = std::filesystem::path(options.directory) / file.name;
        outputs.push_back({path.string(), {file.bytes.begin(), file.bytes.end()}});
    }
    makeDirectory(options.directory);
    writeOutputs(outputs);
    if (!quiet) {
        writeOutput("-", fmt::format("{} written to {}\n", text::counted(outputs.size(), "file"),
                                     text::forTerminal(options.directory)));
    }
    return ExitCode::Done;
}

ExitCode configOfStation(const StationConfigOptions& options, bool quiet)
{
    const mxstation::Plan plan = loadPlan(options.station);
    const auto fieldbus =
        options.fieldbus == "modbus" ? mxmodule::Fieldbus::Modbus : mxmodule::Fieldbus::Raw;
    if (!options.directory.empty()) {
        return writeFiles(options, plan, fieldbus, quiet);
    }
    writeOutput(options.output, options.format == "json" ? parametersJson(plan, fieldbus)
                                                         : parametersText(plan, fieldbus));
    return ExitCode::Done;
}

} // namespace

void addStationConfigVerb(CLI::App& station, const GlobalOptions& global, const VerbChoice& choose)
{
    CLI::App* verb =
        station.add_subcommand("config", "Show or write the parameter image of each module");
    auto options = std::make_shared<StationConfigOptions>();
    addStationChoice(*verb, options->station);
    acceptOneOf(*verb->add_option("--fieldbus", options->fieldbus,
                                  "raw (the image) or modbus (its registers)"),
                {"raw", "modbus"});
    CLI::Option* const format = verb->add_option("--format", options->format, "text or json");
    acceptOneOf(*format, {"text", "json"});
    addOutputOption(*verb, options->output);
    CLI::Option* const directory = verb->add_option(
        "--directory", options->directory, "Write a file per module to this directory instead");
    directory->type_name("DIRECTORY")->excludes(format)->excludes("--output");
    rejectEmptyValue(*directory);
    verb->footer(stationConfigFooter);
    verb->callback([options, choose, &global] {
        choose([options, &global] { return configOfStation(*options, global.quiet); });
    });
}

} // namespace mxtool
