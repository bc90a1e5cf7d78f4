#include "CommandLineOptions.h"
#include "Diagnostic.h"
#include "Interruption.h"
#include "OutputFile.h"
#include "Verbs.h"
#include "station/Consent.h"
#include "station/CouplerChoice.h"
#include "station/TimeOption.h"

#include <mxonline/OutputSetting.h>

#include <optional>

namespace mxtool {

namespace {

using mxonline::OutputSetting;
using std::chrono::milliseconds;

constexpr const char* stationSetFooter =
    R"(CHANNEL is an alias, MODULE/CHANNEL, or the name of a channel if no other has it. VALUE is 0 or
1 of one bit, also false or true, off or on; otherwise a decimal number, or 0x and the bits in
hexadecimal. No other bit changes. A value stays until something else sets it; with --for the
values before come back after that time, also after Ctrl+C and after a fault. A second Ctrl+C
ends at once, and the values stay.

Exit codes: 1 not agreed to; 2 consent cannot be asked for, or an output or value is invalid;
4 an output is not as set, or not as before after --for.
The coupler of the example is that of mxtool simulate examples/stations/pump-house.yaml.

Example:
  $ mxtool station set examples/stations/pump-house.yaml --target tcp:127.0.0.1:1502 --yes P_101=1
  Position  Module  Channel  Alias  Symbol  Before  After
  3         Pumps   DO 1     P_101  QX0_0   0       1
  1 output set and read back; it stays so until it is set again
)";

struct SetOptions
{
    CouplerChoice coupler;
    std::vector<std::string> values;
    std::string time; // empty: the values stay
    bool hasConsent = false;
};

bool tell(OutputFiles& output, const mxonline::OutputReport& outcome, const std::string& text)
{
    report(outcome.findings);
    output.write("-", text);
    return outcome.isDone();
}

bool setOutputs(OutputSetting& setting, const std::optional<milliseconds>& time, OutputFiles& to)
{
    const auto outcome = setting.write();
    return tell(to, outcome, writtenText(outcome, time));
}

bool restoreOutputs(OutputSetting& setting, OutputFiles& to)
{
    const auto outcome = setting.restore();
    return tell(to, outcome, restoredText(outcome));
}

// Whatever happens in between, also to the output, the values before come back.
bool setFor(milliseconds time, OutputSetting& setting, OutputFiles& to)
{
    bool isSet = false;
    try {
        isSet = setOutputs(setting, time, to);
        if (isSet) {
            Interruption::isRequestedUntil(std::chrono::steady_clock::now() + time);
        }
    } catch (...) {
        restoreOutputs(setting, to);
        throw;
    }
    return restoreOutputs(setting, to) && isSet;
}

ExitCode setStation(const SetOptions& options)
{
    requireConsentPossible(options.hasConsent);
    const auto time =
        options.time.empty() ? std::nullopt : std::optional(timeOfOption("--for", options.time));
    const auto values = mxonline::outputValuesOf(options.values);
    StationCoupler station(options.coupler);
    OutputSetting setting(station.coupler(), values);
    const auto before = setting.read();
    OutputFiles output({"-"}, mxmodule::FileKind::Other);
    output.write("-", outputsText(before));
    if (!hasConsent(options.hasConsent, mxonline::outputsQuestion(before.size(), time))) {
        return ExitCode::Findings;
    }
    const Interruption finishes;
    const bool isDone = time ? setFor(*time, setting, output) : setOutputs(setting, time, output);
    return isDone ? ExitCode::Done : ExitCode::Output;
}

} // namespace

void addStationSetVerb(CLI::App& station, const GlobalOptions& /*global*/, const VerbChoice& choose)
{
    CLI::App* verb =
        station.add_subcommand("set", "Set outputs on the coupler, for a time or to stay so");
    auto options = std::make_shared<SetOptions>();
    addCouplerChoice(*verb, options->coupler);
    addConsentOption(*verb, options->hasConsent);
    verb->add_option("CHANNEL=VALUE", options->values, "An output and its value")->required();
    CLI::Option* const time = verb->add_option(
        "--for", options->time, "Set the values before again after a time such as 500ms or 2s");
    time->type_name("TIME");
    rejectEmptyValue(*time);
    verb->footer(stationSetFooter);
    verb->callback([options, choose] { choose([options] { return setStation(*options); }); });
}

} // namespace mxtool
