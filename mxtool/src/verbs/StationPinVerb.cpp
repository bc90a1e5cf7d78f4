#include "CommandLineOptions.h"
#include "OutputFile.h"
#include "Verbs.h"
#include "station/StationChoice.h"

#include <mxstation/Pin.h>

namespace mxtool {

namespace {

constexpr const char* stationPinFooter = R"(Example:
  $ mxtool station pin examples/stations/smallest.yaml -o -
)";

struct StationPinOptions
{
    StationChoice station;
    std::string output; // empty: the station file
};

ExitCode pinStation(const StationPinOptions& options)
{
    const bool replaces = options.output.empty();
    const mxstation::Station station =
        loadStation(options.station, replaces ? StationUse::ReadAndReplaced : StationUse::Read);
    writeOutput(replaces ? options.station.file : options.output, pinned(station, planOf(station)));
    return ExitCode::Done;
}

} // namespace

void addStationPinVerb(CLI::App& station, const GlobalOptions& /*global*/, const VerbChoice& choose)
{
    CLI::App* verb = station.add_subcommand(
        "pin", "Write the addresses of now into the file, so that later changes move none");
    auto options = std::make_shared<StationPinOptions>();
    addStationChoice(*verb, options->station);
    verb->add_option("-o,--output", options->output,
                     "Write to this file instead, - for standard output")
        ->type_name("FILE");
    verb->footer(stationPinFooter);
    verb->callback([options, choose] { choose([options] { return pinStation(*options); }); });
}

} // namespace mxtool
