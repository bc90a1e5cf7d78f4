#include "CommandLineOptions.h"
#include "OutputFile.h"
#include "Verbs.h"
#include "station/StationChoice.h"

#include <mxstation/StationDiff.h>

namespace mxtool {

namespace {

constexpr const char* stationDiffFooter = R"(Exit codes: 1 when the stations differ.

Example:
  $ mxtool station diff examples/stations/pump-house.yaml examples/stations/pump-house.yaml
  A: examples/stations/pump-house.yaml
  B: examples/stations/pump-house.yaml

  No address and no parameter differs

  Verdict: a program bound to A still reads the same values from B
)";

struct StationDiffOptions
{
    StationChoice before;
    std::string after;
    std::string format = "text";
    std::string output = "-";
};

ExitCode diffStations(const StationDiffOptions& options)
{
    const mxstation::Plan before = loadPlan(options.before);
    const mxstation::Plan after = loadPlan({options.after, options.before.databaseUrl});
    const mxstation::StationDifference difference = compare(before, after);
    writeOutput(options.output, options.format == "json" ? difference.json() : difference.text());
    return difference.isSame() ? ExitCode::Done : ExitCode::Findings;
}

} // namespace

void addStationDiffVerb(CLI::App& station, const GlobalOptions& /*global*/,
                        const VerbChoice& choose)
{
    CLI::App* verb =
        station.add_subcommand("diff", "Compare two stations: addresses and parameter images");
    auto options = std::make_shared<StationDiffOptions>();
    verb->add_option("A", options->before.file, "The station file, - for standard input")
        ->required();
    verb->add_option("B", options->after, "The other station file")->required();
    addStationDatabase(*verb, options->before);
    acceptOneOf(*verb->add_option("--format", options->format, "text or json"), {"text", "json"});
    addOutputOption(*verb, options->output);
    verb->footer(stationDiffFooter);
    verb->callback([options, choose] { choose([options] { return diffStations(*options); }); });
}

} // namespace mxtool
