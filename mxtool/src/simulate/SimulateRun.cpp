#include "simulate/SimulateRun.h"

#include "Diagnostic.h"
#include "InputFile.h"
#include "Interruption.h"
#include "OutputFile.h"
#include "simulate/LineInput.h"

#include <mxonline/SimulatorScript.h>

#include <text/ShownText.h>

#include <algorithm>
#include <iterator>
#include <mutex>
#include <thread>

namespace mxtool {

namespace {

using SimulateClock = std::chrono::steady_clock;

// Shows what happens, from the thread of the simulator and from that of the script.
class SimulateOutput
{
public:
    SimulateOutput() : files({"-"}, mxmodule::FileKind::Other) {}

    // The simulator may already be used.
    void begin(const std::string& line)
    {
        const std::lock_guard<std::mutex> lock(access);
        write(line);
    }

    // The simulator goes on when its output has no reader.
    void show(const std::string& line)
    {
        const std::lock_guard<std::mutex> lock(access);
        try {
            if (!isLost) {
                write(line);
            }
        } catch (const Failure&) {
            isLost = true;
        }
    }

private:
    void write(const std::string& line) { files.write("-", text::forTerminal(line) + "\n"); }

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
        constexpr auto longestWait = std::chrono::milliseconds(50);
        while (!isEnded()) {
            const auto now = SimulateClock::now();
            if (now >= time) {
                return false;
            }
            const auto next = now + longestWait;
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

} // namespace

ExitCode simulate(const SimulateOptions& options, bool quiet)
{
    return SimulateRun(options, quiet).run();
}

} // namespace mxtool
