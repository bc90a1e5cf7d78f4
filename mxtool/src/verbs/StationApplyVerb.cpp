#include "CommandLineOptions.h"
#include "Verbs.h"
#include "station/ApplyRun.h"
#include "station/Consent.h"

namespace mxtool {

namespace {

constexpr const char* stationApplyFooter =
    R"(The plan goes to standard error, the report to -o or standard output. A report is written
whenever the coupler may have been written to, also after a fault. The same call again
finishes what a fault, a signal or a power cut left.

Exit codes: 0 done, read back and equal; 1 not agreed to; 2 consent cannot be asked for;
4 not done: the report says what is known.

The coupler of the example is that of mxtool simulate examples/stations/pump-house.yaml.

Example:
  $ mxtool station apply examples/stations/pump-house.yaml --target tcp:127.0.0.1:1502 --yes -o /tmp/report.html
  Pump house on tcp:127.0.0.1:1502 unit 1

  Position  Name    Module    On the coupler
  1         MX0116  5a010116  identified
  2         Levels  5a030304  identified
  3         Pumps   5a020208  identified

  Module  Parameter          Coupler  Station  Registers       Coupler words  Station words
  Levels  Mains suppression  50 Hz    60 Hz    16512 (0x4080)  3200           3c00
  Levels  AI 1/Signal range  ±10 V    4-20 mA  16513 (0x4081)  0000           0300
  Levels  AI 1/Upper limit   9.5 V    9.9 V    16514 (0x4082)  251c           26ac
  Levels  AI 2/Signal range  0-10 V   4-20 mA  16519 (0x4087)  0100           0300

  4 parameters of 1 module differ
  To write: 4 parameters in 5 registers, 3 requests, the commit included
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
    verb->footer(stationApplyFooter);
    verb->callback([options, choose, &global] {
        choose([options, &global] { return applyStation(*options, global.quiet); });
    });
}

} // namespace mxtool
