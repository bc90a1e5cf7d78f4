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
    R"(Exit codes: 1 when an address cannot be stated in the chosen way; a comment gives the reason.

Example:
  $ mxtool station channels examples/stations/pump-house.yaml --format st
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
