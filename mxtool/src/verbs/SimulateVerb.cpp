#include "CommandLineOptions.h"
#include "Diagnostic.h"
#include "InputFile.h"
#include "Interruption.h"
#include "OutputFile.h"
#include "Verbs.h"
#include "simulate/LineInput.h"
#include "station/StationChoice.h"

#include <mxonline/SimulatorScript.h>

#include <fmt/format.h>
#include <text/ShownText.h>

#include <algorithm>
#include <iterator>
#include <mutex>
#include <thread>

namespace mxtool {

namespace {

using SimulateClock = std::chrono::steady_clock;

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

struct SimulateOptions
{
    StationChoice station;
    std::string listen = "tcp:127.0.0.1:1502";
    std::string script; // empty: standard input
    bool isStrict = false;
    std::vector<std::string> faults;
    std::optional<unsigned> seconds;
};

// Shows what happens, from the thread of the simulator and from that of the script.
class SimulateOutput
{
public:
    SimulateOutput() : files({"-"}, mxmodule::FileKind::Other) {}

    void begin(const std::string& line) { files.write("-", text::forTerminal(line) + "\n"); }

    // The simulator goes on when its output has no reader.
    void show(const std::string& line)
    {
        const std::lock_guard<std::mutex> lock(access);
        try {
            if (!isLost) {
                begin(line);
            }
        } catch (const Failure&) {
            isLost = true;
        }
    }

private:
    bool isLost = false;
    std::mutex access;
    OutputFiles files;
};

class ShownEvents : public mxonline::SimulatorObserver
{
public:
    ShownEvents(SimulateOutput& shownBy, bool quiet) : output(shownBy), isQuiet(quiet) {}

    void happened(const mxonline::SimulatorEvent& event) override
    {
        if (!isQuiet) {
            output.show(event.text());
        }
    }

private:
    SimulateOutput& output;
    bool isQuiet;
};

class SimulateRun : public mxonline::SimulatorScriptHost
{
public:
    SimulateRun(const SimulateOptions& chosen, bool quiet) : options(chosen), events(output, quiet)
    {}

    ExitCode run()
    {
        const mxonline::Target target = mxonline::listenTargetOf(options.listen);
        std::vector<mxonline::SimulatedFault> faults;
        std::transform(options.faults.begin(), options.faults.end(), std::back_inserter(faults),
                       mxonline::simulatedFaultOf);
        const mxstation::Plan plan = loadPlan(options.station);
        const std::vector<char> script =
            options.script.empty() ? std::vector<char>() : loadBytes(options.script);
        const Interruption ends;
        mxonline::SimulatorOptions how;
        how.isStrict = options.isStrict;
        how.faults = faults;
        how.observer = &events;
        mxonline::Simulator simulator(plan, target, how);
        report(listeningNotes(simulator.address()));
        output.begin("listening at " + targetText(simulator.address()));
        end = options.seconds ? SimulateClock::now() + std::chrono::seconds(*options.seconds)
                              : SimulateClock::time_point::max();
        runScript(simulator, {script.begin(), script.end()});
        static_cast<void>(isEndedUntil(SimulateClock::time_point::max()));
        return hasRejected ? ExitCode::Findings : ExitCode::Done;
    }

    bool isEndedUntil(SimulateClock::time_point time) override
    {
        constexpr auto slice = std::chrono::milliseconds(50);
        while (!isEnded()) {
            const auto now = SimulateClock::now();
            if (now >= time) {
                return false;
            }
            const auto next = now + slice;
            std::this_thread::sleep_until(std::min({next, time, end}));
        }
        return true;
    }

    void show(const std::string& line) override { output.show(line); }

    void reject(const Finding& finding) override
    {
        hasRejected = true;
        report(finding);
    }

private:
    bool isEnded() const { return Interruption::isRequested() || SimulateClock::now() >= end; }

    void runScript(mxonline::Simulator& simulator, const std::string& script)
    {
        if (!options.script.empty()) {
            mxonline::SimulatorScript(simulator, inputName(options.script), *this).runText(script);
            return;
        }
        mxonline::SimulatorScript lines(simulator, inputName("-"), *this);
        LineInput input([this] { return isEnded(); });
        while (const auto line = input.next()) {
            if (!lines.runLine(*line)) {
                return;
            }
        }
    }

    const SimulateOptions& options;
    SimulateOutput output;
    ShownEvents events;
    SimulateClock::time_point end;
    bool hasRejected = false;
};

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
        choose([options, &global] { return SimulateRun(*options, global.quiet).run(); });
    });
}

} // namespace mxtool
