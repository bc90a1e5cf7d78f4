#include "CommandLineOptions.h"
#include "Verbs.h"
#include "simulate/SimulateRun.h"

#include <mxonline/SimulatedFault.h>

#include <fmt/format.h>

namespace mxtool {

namespace {

constexpr const char* simulateFooter =
    R"(It ends after Ctrl+C or --seconds, not at the end of standard input. Lines of the script:
  NAME = VALUE                           sets an input, or an output until a client sets it
  ramp NAME FROM TO in TIME [step TIME]  sets numbers from FROM to TO, by default each 100ms
  sleep TIME                             waits: 100ms, 2s, 5m
  show [NAME]                            shows a channel, those of a module, or all
  repeat                                 begins again (--script only)
  # COMMENT

Faults, each possibly followed by ",after=N" (so many requests are answered correctly before),
",times=N" (so many requests have it), ",function=F", ",address=A" (only these requests have it):
@faults@
Exit codes: 0 also after Ctrl+C; 1 when a line of the script was not carried out; 4 when it cannot
listen.

Example:
  $ mxtool simulate examples/stations/smallest.yaml --listen tcp:127.0.0.1:1502 --seconds 1
  listening at tcp:127.0.0.1:1502
)";

std::string footerText()
{
    std::string faults;
    for (const mxonline::FaultDescription& one : mxonline::faultDescriptions()) {
        faults += fmt::format("  {:<26} {}\n", one.form, one.meaning);
    }
    const std::string text = simulateFooter;
    const std::string mark = "@faults@\n";
    return std::string(text).replace(text.find(mark), mark.size(), faults + "\n");
}

void addSimulateOptions(CLI::App& verb, SimulateOptions& options)
{
    addStationChoice(verb, options.station);
    CLI::Option* const listen = verb.add_option(
        "--listen", options.listen,
        "Where clients find it: tcp:HOST[:PORT], port 0 for one that the system chooses, or "
        "rtu:DEVICE[,BAUD[,PARITY[,STOPBITS]]]; by default tcp:127.0.0.1:1502");
    listen->type_name("TARGET");
    rejectEmptyValue(*listen);
    CLI::Option* const script = verb.add_option(
        "--script", options.script, "Carry out the lines of this file, not of standard input");
    script->type_name("FILE");
    rejectEmptyValue(*script);
    verb.add_flag("--strict", options.isStrict,
                  "Registers between the parameters of two modules do not exist, otherwise 0");
    CLI::Option* const fault = verb.add_option("--fault", options.faults,
                                               "What it does wrong, see below; may be repeated");
    fault->type_name("FAULT")->expected(1)->take_all();
    rejectEmptyValue(*fault);
    verb.add_option("--seconds", options.seconds, "End after this time")
        ->type_name("SECONDS")
        ->check(CLI::Range(0U, 86400U));
}

} // namespace

void addSimulateVerb(CLI::App& program, const GlobalOptions& global, const VerbChoice& choose)
{
    CLI::App* verb =
        program.add_subcommand("simulate", "Be the coupler of a station, to try it without one");
    auto options = std::make_shared<SimulateOptions>();
    addSimulateOptions(*verb, *options);
    verb->footer(footerText());
    verb->callback([options, choose, &global] {
        choose([options, &global] { return simulate(*options, global.quiet); });
    });
}

} // namespace mxtool
