#include "CommandLineOptions.h"
#include "Diagnostic.h"
#include "OutputFile.h"
#include "Verbs.h"
#include "station/StationChoice.h"

#include <mxstation/StationCheck.h>

#include <fmt/format.h>
#include <text/Counted.h>

#include <unistd.h>

namespace mxtool {

namespace {

constexpr const char* stationCheckFooter =
    R"(Exit codes: 1 on errors, of which warnings are a part; 3 when the file cannot be read.

Example:
  $ mxtool station check examples/stations/pump-house.yaml
  0 errors, 0 notes
)";

struct StationCheckOptions
{
    StationChoice station;
    std::string format = "text";
    std::string output = "-";
};

std::string checkedText(const mxstation::StationCheck& checked, bool coloured, bool quiet)
{
    std::string text;
    for (const Finding& finding : checked.findings) {
        text += toText(finding, coloured);
    }
    return quiet ? text
                 : text + fmt::format("{}, {}\n",
                                      text::counted(checked.countOf(Severity::Error), "error"),
                                      text::counted(checked.countOf(Severity::Note), "note"));
}

ExitCode checkStation(const StationCheckOptions& options, bool quiet)
{
    const auto checked = mxstation::checkOf(mxstation::plan(loadStation(options.station)));
    const bool coloured = options.output == "-" && takesColour(STDOUT_FILENO);
    writeOutput(options.output,
                options.format == "json" ? checked.json() : checkedText(checked, coloured, quiet));
    return checked.isClean() ? ExitCode::Done : ExitCode::Findings;
}

} // namespace

void addStationCheckVerb(CLI::App& station, const GlobalOptions& global, const VerbChoice& choose)
{
    CLI::App* verb = station.add_subcommand("check", "Report everything that is wrong at once");
    auto options = std::make_shared<StationCheckOptions>();
    addStationChoice(*verb, options->station);
    acceptOneOf(*verb->add_option("--format", options->format, "text or json"), {"text", "json"});
    addOutputOption(*verb, options->output);
    verb->footer(stationCheckFooter);
    verb->callback([options, choose, &global] {
        choose([options, &global] { return checkStation(*options, global.quiet); });
    });
}

} // namespace mxtool
