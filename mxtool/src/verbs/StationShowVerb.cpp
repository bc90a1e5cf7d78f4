#include "CommandLineOptions.h"
#include "OutputFile.h"
#include "Verbs.h"
#include "station/StationChoice.h"

#include <mxstation/StationReport.h>

namespace mxtool {

namespace {

constexpr const char* stationShowFooter = R"(Example:
  $ mxtool station show examples/stations/pump-house.yaml
)";

struct StationShowOptions
{
    StationChoice station;
    std::string format = "text";
    std::string output = "-";
};

ExitCode showStation(const StationShowOptions& options)
{
    const mxstation::Plan plan = loadPlan(options.station);
    writeOutput(options.output, options.format == "json" ? mxstation::stationJson(plan)
                                                         : mxstation::stationText(plan));
    return ExitCode::Done;
}

} // namespace

void addStationShowVerb(CLI::App& station, const GlobalOptions& /*global*/,
                        const VerbChoice& choose)
{
    CLI::App* verb =
        station.add_subcommand("show", "Show the row: addresses, parameter bytes and registers");
    auto options = std::make_shared<StationShowOptions>();
    addStationChoice(*verb, options->station);
    acceptOneOf(*verb->add_option("--format", options->format, "text or json"), {"text", "json"});
    addOutputOption(*verb, options->output);
    verb->footer(stationShowFooter);
    verb->callback([options, choose] { choose([options] { return showStation(*options); }); });
}

} // namespace mxtool
