#include "CommandLineOptions.h"
#include "Verbs.h"
#include "station/ApplyRun.h"
#include "station/Consent.h"
#include "station/CouplerExample.h"

namespace mxtool {

namespace {

constexpr const char* stationApplyHelp =
    R"(The plan goes to standard error, the report to -o or standard output. A report is written
whenever the coupler may have been written to, also after a fault. The same call again
finishes what a fault, a signal or a power cut left.

Exit codes: 0 done, read back and equal; 1 not agreed to; 2 consent cannot be asked for;
4 not done: the report says what is known.

The coupler of the example is that of mxtool simulate examples/stations/pump-house.yaml.

Example:
  $ mxtool station apply examples/stations/pump-house.yaml --target tcp:127.0.0.1:1502 --yes -o /tmp/report.html
)";

constexpr const char* stationApplyEnd =
    R"(  To write: 4 parameters in 5 registers, 3 requests, the commit included
  Note: Parameters are read as last written: they may not be active before a commit
  Note: apply writes the commit register 8192 (0x2000) in any case

  Done: read back and equal to the station; 4 parameters changed
)";

} // namespace

void addStationApplyVerb(CLI::App& station, const GlobalOptions& global, const VerbChoice& choose)
{
    CLI::App* verb =
        station.add_subcommand("apply", "Write to the coupler what differs, and read it back");
    auto options = std::make_shared<ApplyOptions>();
    addCouplerChoice(*verb, options->coupler);
    addConsentOption(*verb, options->hasConsent);
    acceptOneOf(*verb->add_option("--format", options->format,
                                  "Of the report: text, json or html (a self-contained page); "
                                  "by default that of the name of the output"),
                {"text", "json", "html"});
    addOutputOption(*verb, options->output);
    verb->footer(std::string(stationApplyHelp) + pumpHouseDifference + stationApplyEnd);
    verb->callback([options, choose, &global] {
        choose([options, &global] { return applyStation(*options, global.quiet); });
    });
}

} // namespace mxtool
