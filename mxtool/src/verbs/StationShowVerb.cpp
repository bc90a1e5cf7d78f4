#include "CommandLineOptions.h"
#include "OutputFile.h"
#include "Verbs.h"
#include "station/StationChoice.h"

#include <mxstation/StationReport.h>

namespace mxtool {

namespace {

constexpr const char* stationShowFooter = R"(Example:
  $ mxtool station show examples/stations/smallest.yaml
  smallest

  Position  Name    Module    In bytes  In at  Out bytes  Out at  Parameter bytes  Registers  Label
  1         MX0108  5a010108  1         0      0                  2                9          8 DI 24 V DC 3 ms
  2         MX0204  5a020204  0                1          0       10               9          4 DO relay 230 V AC 2 A
  3         MX0302  5a030302  4         1-4    0                  6                4          2 AI 0-10 V

  Image  At  Size               Without a channel  Module
  out    0   4 bits from bit 4  no channel         MX0204

  3 modules, parameters: 18 bytes, 22 registers
  Input image: 5 bytes at 0-4, data of modules: 5 bytes
  Output image: 1 byte at 0, data of modules: 1 byte
  Layout plain: as in the row, at most 64 modules, most significant byte of a value first
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
