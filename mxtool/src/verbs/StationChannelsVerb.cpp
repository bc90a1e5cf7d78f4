#include "Diagnostic.h"
#include "OutputFile.h"
#include "Verbs.h"
#include "station/StationChannelsOptions.h"

#include <mxstation/ChannelExport.h>
#include <mxstation/Declarations.h>
#include <mxstation/StationPicture.h>

namespace mxtool {

namespace {

using mxstation::AddressStyle;
using mxstation::VariableScope;

constexpr const char* stationChannelsFooter =
    R"(Exit codes: 1 when a channel cannot be declared in the chosen way; a comment gives the reason.

Example:
  $ mxtool station channels examples/stations/smallest.yaml
  Position  Module  Channel  Alias  Symbol  Byte  Bit  Bits  Comment
  1         MX0108  DI 1            IX0_0   0     0    1
  1         MX0108  DI 2            IX0_1   0     1    1
  1         MX0108  DI 3            IX0_2   0     2    1
  1         MX0108  DI 4            IX0_3   0     3    1
  1         MX0108  DI 5            IX0_4   0     4    1
  1         MX0108  DI 6            IX0_5   0     5    1
  1         MX0108  DI 7            IX0_6   0     6    1
  1         MX0108  DI 8            IX0_7   0     7    1
  2         MX0204  Relay 1         QX0_0   0     0    1
  2         MX0204  Relay 2         QX0_1   0     1    1
  2         MX0204  Relay 3         QX0_2   0     2    1
  2         MX0204  Relay 4         QX0_3   0     3    1
  3         MX0302  AI 1            IW1     1     0    16
  3         MX0302  AI 2            IW3     3     0    16
)";

mxstation::Declarations declared(const StationChannelsOptions& options, const mxstation::Plan& plan)
{
    mxstation::DeclarationOptions how;
    how.address = options.address == "index"      ? AddressStyle::Index
                  : options.address == "separate" ? AddressStyle::Separate
                                                  : AddressStyle::Byte;
    how.scope = options.scope == "program" ? VariableScope::Program : VariableScope::Global;
    return options.format == "st" ? declarations(plan, how) : plcopenXml(plan, how);
}

mxstation::Declarations listing(const StationChannelsOptions& options, const mxstation::Plan& plan)
{
    if (options.declares()) {
        return declared(options, plan);
    }
    if (options.format == "c") {
        return cHeader(plan);
    }
    if (options.format == "json") {
        return {channelsJson(plan), {}};
    }
    return {options.format == "csv" ? channelsCsv(plan, options.csv.style()) : channelsText(plan),
            {}};
}

ExitCode channelsOfStation(const StationChannelsOptions& options)
{
    const mxstation::Plan plan = loadPlan(options.station);
    const mxstation::Declarations list = listing(options, plan);
    std::vector<Output> outputs;
    if (!options.picture.empty()) {
        outputs.push_back({options.picture, stationSvg(plan)});
    }
    if (options.picture != "-" || options.output != "-") {
        outputs.push_back({options.output, list.text});
    }
    writeOutputs(outputs);
    report(list.findings);
    return list.findings.empty() ? ExitCode::Done : ExitCode::Findings;
}

} // namespace

void addStationChannelsVerb(CLI::App& station, const GlobalOptions& /*global*/,
                            const VerbChoice& choose)
{
    CLI::App* verb = station.add_subcommand("channels", "List all channels, or declare them");
    auto options = std::make_shared<StationChannelsOptions>();
    addStationChannelsOptions(*verb, *options);
    verb->footer(stationChannelsFooter);
    verb->callback([options, choose] {
        checkWords(*options);
        choose([options] { return channelsOfStation(*options); });
    });
}

} // namespace mxtool
