#include "CommandLineOptions.h"
#include "OutputFile.h"
#include "Verbs.h"
#include "station/StationChoice.h"

#include <mxstation/Pin.h>

namespace mxtool {

namespace {

constexpr const char* stationPinFooter = R"(Example:
  $ mxtool station pin examples/stations/smallest.yaml -o -
  # yaml-language-server: $schema=../../share/parser-mx/mx-station.schema.json
  # The least that a station needs: its modules in their order. Their data follow each other without a gap.
  # Without `modbus` it can still be planned; for a coupler on Modbus, `modbus` says at least where the parameters
  # begin: MX0108 at register 0x4000, MX0204 at 0x4080, MX0302 at 0x4100.
  modbus: {parameters: {address: 0x4000}}
  modules:
    - module: ../modules/MX0108.yaml # 8 digital inputs: input byte 0
      at: {in: 0}
    - module: ../modules/MX0204.yaml # 4 relays: output byte 0
      at: {out: 0}
    - module: ../modules/MX0302.yaml # 2 analogue inputs: input bytes 1 to 4
      at: {in: 1}
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
    CLI::App* verb =
        station.add_subcommand("pin", "Write the present addresses into the file to keep them");
    auto options = std::make_shared<StationPinOptions>();
    addStationChoice(*verb, options->station);
    verb->add_option("-o,--output", options->output,
                     "Write to this file instead, - for standard output")
        ->type_name("FILE");
    verb->footer(stationPinFooter);
    verb->callback([options, choose] { choose([options] { return pinStation(*options); }); });
}

} // namespace mxtool
