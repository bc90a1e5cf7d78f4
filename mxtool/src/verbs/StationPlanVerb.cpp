#include "CommandLineOptions.h"
#include "Diagnostic.h"
#include "OutputFile.h"
#include "Verbs.h"
#include "station/CouplerChoice.h"
#include "station/CouplerExample.h"

namespace mxtool {

namespace {

using mxonline::CouplerDifference;
using mxonline::DifferenceUse;

constexpr const char* stationPlanHelp =
    R"(Exit codes: 0 nothing to do, 1 something to do, 4 the coupler failed or has other modules.

The coupler of the example is that of mxtool simulate examples/stations/pump-house.yaml.

Example:
  $ mxtool station plan examples/stations/pump-house.yaml --target tcp:127.0.0.1:1502
)";

constexpr const char* stationPlanEnd =
    R"(  To write: 4 parameters in 5 registers, 3 requests, the commit included
  Note: Parameters are read as last written: they may not be active before a commit
  Note: apply writes the commit register 8192 (0x2000) in any case
  Nothing was written.
)";

constexpr const char* stationVerifyHelp =
    R"(Exit codes: 0 equal, 1 differences, 4 the coupler failed or has other modules.

The coupler of the example is that of mxtool simulate examples/stations/pump-house.yaml.

Example:
  $ mxtool station verify examples/stations/pump-house.yaml --target tcp:127.0.0.1:1502
)";

constexpr const char* stationVerifyEnd =
    R"(  Note: Parameters are read as last written: they may not be active before a commit
)";

struct ComparisonOptions
{
    CouplerChoice coupler;
    std::string format = "text";
    std::string output = "-";
};

ExitCode compareCoupler(const ComparisonOptions& options, DifferenceUse use)
{
    StationCoupler station(options.coupler);
    const CouplerDifference difference = station.coupler().difference();
    writeOutput(options.output,
                options.format == "json" ? difference.json() : difference.text(use));
    const auto errors = difference.identityErrors();
    if (!errors.empty()) {
        throw Failure(errors);
    }
    return difference.isSame() ? ExitCode::Done : ExitCode::Findings;
}

void addComparison(CLI::App& verb, DifferenceUse use, const VerbChoice& choose)
{
    auto options = std::make_shared<ComparisonOptions>();
    addCouplerChoice(verb, options->coupler);
    acceptOneOf(*verb.add_option("--format", options->format, "text or json"), {"text", "json"});
    addOutputOption(verb, options->output);
    verb.callback([options, use, choose] {
        choose([options, use] { return compareCoupler(*options, use); });
    });
}

} // namespace

void addStationPlanVerb(CLI::App& station, const GlobalOptions& /*global*/,
                        const VerbChoice& choose)
{
    CLI::App* verb = station.add_subcommand("plan", "Show what apply would change; write nothing");
    addComparison(*verb, DifferenceUse::Plan, choose);
    verb->footer(std::string(stationPlanHelp) + pumpHouseDifference + stationPlanEnd);
}

void addStationVerifyVerb(CLI::App& station, const GlobalOptions& /*global*/,
                          const VerbChoice& choose)
{
    CLI::App* verb =
        station.add_subcommand("verify", "Compare the coupler's parameters with the station");
    addComparison(*verb, DifferenceUse::Verify, choose);
    verb->footer(std::string(stationVerifyHelp) + pumpHouseDifference + stationVerifyEnd);
}

} // namespace mxtool
