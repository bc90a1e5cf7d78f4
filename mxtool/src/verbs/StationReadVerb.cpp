#include "CommandLineOptions.h"
#include "Diagnostic.h"
#include "OutputFile.h"
#include "Verbs.h"
#include "station/CouplerChoice.h"
#include "station/CouplerExample.h"

#include <mxonline/ReadBack.h>

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/ShownText.h>

#include <iostream>

namespace mxtool {

namespace {

using mxonline::CouplerDifference;
using mxonline::CouplerState;

constexpr const char* stationReadHelp =
    R"(What differs goes to standard error before the file is written. Every byte of the file is kept
but the values; values that it does not state yet are added below their module. Nothing is
written to the coupler.

Exit codes: 0 done, 4 the coupler failed, has other modules, or values that no station states.

The coupler of the example is that of mxtool simulate examples/stations/pump-house.yaml.

Example:
  $ mxtool station read examples/stations/pump-house.yaml --target tcp:127.0.0.1:1502 -o /tmp/pump-house.yaml
)";

constexpr const char* stationReadEnd =
    R"(  Note: Parameters are read as last written: they may not be active before a commit

  4 values written to /tmp/pump-house.yaml
)";

struct StationReadOptions
{
    CouplerChoice coupler;
    std::string output; // empty: the station file
};

ExitCode readStation(const StationReadOptions& options, bool quiet)
{
    const mxonline::Target target = mxonline::targetOf(options.coupler.target);
    const bool replaces = options.output.empty();
    const std::string output = replaces ? options.coupler.station.file : options.output;
    const mxstation::Station station = loadStation(
        options.coupler.station, replaces ? StationUse::ReadAndReplaced : StationUse::Read);
    StationCoupler connected(options.coupler, target, planOf(station));
    const CouplerState state = connected.coupler().read();
    const CouplerDifference difference = compare(connected.plan(), target, state);
    if (!quiet) {
        std::cerr << difference.text(mxonline::DifferenceUse::Verify) << std::flush;
    }
    writeOutput(output, withParametersOf(station, connected.plan(), target, state));
    if (!quiet) {
        std::cerr << fmt::format("\n{} written to {}\n",
                                 text::counted(difference.parameterCount(), "value"),
                                 output == "-" ? "standard output" : text::forTerminal(output));
    }
    return ExitCode::Done;
}

} // namespace

void addStationReadVerb(CLI::App& station, const GlobalOptions& global, const VerbChoice& choose)
{
    CLI::App* verb =
        station.add_subcommand("read", "Write the coupler's parameters into the station file");
    auto options = std::make_shared<StationReadOptions>();
    addCouplerChoice(*verb, options->coupler);
    verb->add_option("-o,--output", options->output,
                     "Write to this file instead, - for standard output")
        ->type_name("FILE");
    verb->footer(std::string(stationReadHelp) + pumpHouseDifference + stationReadEnd);
    verb->callback([options, choose, &global] {
        choose([options, &global] { return readStation(*options, global.quiet); });
    });
}

} // namespace mxtool
