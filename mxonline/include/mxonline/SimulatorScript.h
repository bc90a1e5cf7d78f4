#pragma once

#include "mxonline/Simulator.h"

#include <mxmodule/Finding.h>

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

namespace mxonline {

/// What a script of a simulator needs of its caller.
class MXONLINE_API SimulatorScriptHost
{
public:
    SimulatorScriptHost() = default;
    virtual ~SimulatorScriptHost();
    SimulatorScriptHost(const SimulatorScriptHost&) = delete;
    SimulatorScriptHost& operator=(const SimulatorScriptHost&) = delete;

    /// Waits until `time`; returns true earlier if the script is to end.
    virtual bool isEndedUntil(std::chrono::steady_clock::time_point time) = 0;

    /// A line that the script shows, without its end.
    virtual void show(const std::string& line) = 0;

    /// A line of the script that was not carried out. It does not end the script.
    virtual void reject(const mxmodule::Finding& finding) = 0;
};

/// Sets and shows the channels of a simulator, line after line. A line is one of:
///
///     NAME = VALUE                             sets an input, or an output
///     ramp NAME FROM TO in TIME [step TIME]    sets numbers from FROM to TO, by default each 100ms
///     sleep TIME                               waits: 100ms, 2s, 5m
///     show [NAME]                              shows a channel, those of a module, or all
///     repeat                                   begins again with the first line of a text
///     # COMMENT                                also after a line
///
/// NAME and VALUE are those of `Simulator::setInput`. For one thread at a time.
class MXONLINE_API SimulatorScript
{
public:
    /// `simulator` and `host` outlive the object. `name` is that of the script for messages.
    SimulatorScript(Simulator& simulator, const std::string& name, SimulatorScriptHost& host);
    ~SimulatorScript();
    SimulatorScript(const SimulatorScript&) = delete;
    SimulatorScript& operator=(const SimulatorScript&) = delete;

    /// Carries out the next line. Returns false if the host ended it.
    bool runLine(const std::string& line);

    /// Carries out the lines of `text`. Returns false if the host ended it. What is wrong with a
    /// line is reported once, however often it is repeated; a repetition takes at least 10 ms.
    bool runText(const std::string& text);

private:
    class Content;
    std::unique_ptr<Content> content;
};

} // namespace mxonline
