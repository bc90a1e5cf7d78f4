#include "Verbs.h"

namespace mxtool {

namespace {

constexpr const char* stationFooter = R"(mxtool station VERB --help lists what a verb accepts.

Example:
  $ mxtool station check examples/stations/pump-house.yaml
  0 errors, 0 notes
)";

} // namespace

void addStationVerb(CLI::App& program, const GlobalOptions& global, const VerbChoice& choose)
{
    CLI::App* station =
        program.add_subcommand("station", "Plan modules in a row: addresses, channels, parameters");
    station->require_subcommand(1);
    station->fallthrough();
    station->footer(stationFooter);
    addStationShowVerb(*station, global, choose);
    addStationChannelsVerb(*station, global, choose);
    addStationConfigVerb(*station, global, choose);
    addStationCheckVerb(*station, global, choose);
    addStationDiffVerb(*station, global, choose);
    addStationPinVerb(*station, global, choose);
    addStationPlanVerb(*station, global, choose);
    addStationApplyVerb(*station, global, choose);
    addStationVerifyVerb(*station, global, choose);
    addStationReadVerb(*station, global, choose);
    addStationWatchVerb(*station, global, choose);
    addStationSetVerb(*station, global, choose);
}

} // namespace mxtool
