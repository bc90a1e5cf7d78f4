#include "CommandLineOptions.h"
#include "Verbs.h"
#include "station/TimeOption.h"
#include "station/WatchRun.h"

#include <cstdint>

namespace mxtool {

namespace {

constexpr const char* stationWatchFooter =
    R"(NAME selects channels: an alias, MODULE/CHANNEL, the name of a channel if no other has it, or
a module for all of its channels. Without NAME all channels of the station are watched.

After a fault the text goes on with the next sample; csv and json end, unless --keep-going.

Exit codes: 0 also after Ctrl+C; 2 also for a channel that there is not; 4 the coupler failed or
has other modules.

The coupler of the example is that of mxtool simulate examples/stations/pump-house.yaml.

Example:
  $ mxtool station watch examples/stations/pump-house.yaml --target tcp:127.0.0.1:1502 --once --format json P_101 LT_101
  {"schema":{"name":"mxtool.sample","version":1},"time":"2026-01-31T08:15:00.123Z","values":{"LT_101":0,"P_101":0},"changed":[]}
)";

ExitCode watchStation(const WatchOptions& options)
{
    const std::chrono::milliseconds interval = timeOfOption("--interval", options.interval);
    return WatchRun(options, interval).run();
}

void addWatchOptions(CLI::App& verb, WatchOptions& options)
{
    addCouplerChoice(verb, options.coupler);
    verb.add_option("NAME", options.names, "Channels and modules to watch; by default all");
    verb.add_option("--interval", options.interval,
                    "Time from sample to sample, such as 10ms, 1s (the default) or 5m")
        ->type_name("TIME");
    CLI::Option* const once = verb.add_flag("--once", options.isOnce, "Take one sample");
    verb.add_option("--samples", options.samples, "Take this number of samples")
        ->type_name("COUNT")
        ->check(CLI::Range(std::uint64_t{1}, std::uint64_t{1000000000000}))
        ->excludes(once);
    acceptOneOf(*verb.add_option("--format", options.format,
                                 "text (on a terminal a table that is redrawn), csv or json, a "
                                 "line per sample"),
                {"text", "csv", "json"});
    verb.add_flag("--changes", options.changesOnly,
                  "After the first sample only what changed: of the text the channels, of csv and "
                  "json the samples");
    verb.add_flag("--keep-going", options.keepsGoing,
                  "Go on after a fault with csv and json too; it goes to standard error");
}

} // namespace

void addStationWatchVerb(CLI::App& station, const GlobalOptions& /*global*/,
                         const VerbChoice& choose)
{
    CLI::App* verb =
        station.add_subcommand("watch", "Show channels by name with their values on the coupler");
    auto options = std::make_shared<WatchOptions>();
    addWatchOptions(*verb, *options);
    verb->footer(stationWatchFooter);
    verb->callback([options, choose] { choose([options] { return watchStation(*options); }); });
}

} // namespace mxtool
