#include "mxonline/SimulatorScript.h"

#include "channels/ChannelNames.h"
#include "channels/ValueText.h"
#include "simulator/ScriptLine.h"

#include <fmt/format.h>
#include <text/WholeNumber.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <vector>

namespace mxonline {

namespace {

using ScriptClock = std::chrono::steady_clock;
using mxmodule::Failure;
using mxmodule::Finding;

constexpr auto leastRepetition = std::chrono::milliseconds(10);

std::int64_t numberIn(const ScriptWord& word)
{
    const auto number = text::wholeNumber<std::int64_t>(word.text);
    if (!number) {
        throw ScriptError(word.column,
                          fmt::format("found \"{}\", expected a whole number", word.text));
    }
    return *number;
}

// The value of a ramp when `passed` of `time` is over. The way may be longer than the numbers are.
std::int64_t valueBetween(std::int64_t from, std::int64_t to, std::chrono::milliseconds passed,
                          std::chrono::milliseconds time)
{
    const auto part =
        static_cast<long double>(passed.count()) / static_cast<long double>(time.count());
    const auto begin = static_cast<long double>(from);
    return std::llround(begin + (static_cast<long double>(to) - begin) * part);
}

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

} // namespace

class SimulatorScript::Content
{
public:
    Content(Simulator& simulated, std::string called, SimulatorScriptHost& toldOf)
        : host(toldOf), simulator(simulated), name(std::move(called)), names(simulated.plan())
    {}

    // Returns false if the host ended it.
    bool run(const std::string& text, bool canRepeat)
    {
        isRepeated = false;
        try {
            const ScriptLine line = scriptLineOf(text);
            if (line.action == ScriptAction::Repeat && !canRepeat) {
                throw ScriptError(1, "only the lines of a file can be repeated");
            }
            return carryOut(line);
        } catch (const ScriptError& error) {
            reject(error.column, {mxmodule::Severity::Error, "", error.what()});
        }
        return true;
    }

    SimulatorScriptHost& host;
    std::size_t number = 0;  // of the line, from 1
    bool isRepeated = false; // the line asks for it

private:
    bool carryOut(const ScriptLine& line)
    {
        switch (line.action) {
        case ScriptAction::Set:
            set(line.name, line.value);
            return true;
        case ScriptAction::Ramp:
            return ramp(line);
        case ScriptAction::Sleep:
            return !host.isEndedUntil(ScriptClock::now() + line.time);
        case ScriptAction::Show:
            show(line.name);
            return true;
        case ScriptAction::Repeat:
            isRepeated = true;
            return true;
        default:
            return true;
        }
    }

    // Names and values are rejected where the line has them.
    template <typename Action>
    static auto at(const ScriptWord& word, const Action& action)
    {
        try {
            return action();
        } catch (const Failure& failure) {
            const Finding& reason = failure.reason();
            throw ScriptError(word.column,
                              reason.hint.empty() ? reason.text : reason.text + "; " + reason.hint);
        }
    }

    const mxstation::Channel& channelAt(const ScriptWord& word) const
    {
        return simulator.plan().channels[at(word, [&] { return names.find(word.text); })];
    }

    void put(const ScriptWord& channel, const ScriptWord& value)
    {
        const bool isInput = channelAt(channel).isInput;
        at(value, [&] {
            isInput ? simulator.setInput(channel.text, value.text)
                    : simulator.setOutput(channel.text, value.text);
        });
    }

    void set(const ScriptWord& channel, const ScriptWord& value)
    {
        put(channel, value);
        if (!channelAt(channel).isInput) {
            host.show(fmt::format("{} = {} (an output, set by the script)", channel.text,
                                  simulator.value(channel.text).text));
        }
    }

    // The first value at once, the last at the end of the time, also when others are late.
    bool ramp(const ScriptLine& line)
    {
        const std::int64_t from = numberIn(line.value);
        const std::int64_t to = numberIn(line.last);
        const auto begin = ScriptClock::now();
        const mxstation::Channel& channel = channelAt(line.name);
        at(line.last, [&] { return bitsOf(channel, line.last.text); }); // before anything is set
        put(line.name, line.value);
        for (auto passed = line.step; passed < line.time; passed += line.step) {
            if (host.isEndedUntil(begin + passed)) {
                return false;
            }
            const std::int64_t now = valueBetween(from, to, passed, line.time);
            put(line.name, {std::to_string(now), line.value.column});
        }
        if (host.isEndedUntil(begin + line.time)) {
            return false;
        }
        put(line.name, line.last);
        return true;
    }

    void show(const ScriptWord& word)
    {
        const std::vector<std::string> wanted =
            word.text.empty() ? std::vector<std::string>() : std::vector<std::string>{word.text};
        for (const std::size_t index : at(word, [&] { return names.select(wanted); })) {
            const std::string called = names.nameOf(index);
            host.show(fmt::format("{} = {}", called, simulator.value(called).text));
        }
    }

    void reject(std::size_t column, Finding finding)
    {
        if (rejected.insert(number).second) {
            finding.place = fmt::format("{}:{}:{}", name, number, column);
            host.reject(finding);
        }
    }

    Simulator& simulator;
    std::string name;
    ChannelNames names;
    std::set<std::size_t> rejected; // lines that were reported
};

SimulatorScriptHost::~SimulatorScriptHost() = default;

SimulatorScript::SimulatorScript(Simulator& simulator, const std::string& name,
                                 SimulatorScriptHost& host)
    : content(std::make_unique<Content>(simulator, name, host))
{}

SimulatorScript::~SimulatorScript() = default;

bool SimulatorScript::runLine(const std::string& line)
{
    ++content->number;
    return content->run(line, false);
}

bool SimulatorScript::runText(const std::string& text)
{
    const std::vector<std::string> lines = linesOf(text);
    content->number = 0;
    auto leastEnd = ScriptClock::now() + leastRepetition;
    while (content->number < lines.size()) {
        ++content->number;
        if (!content->run(lines[content->number - 1], true)) {
            return false;
        }
        if (content->isRepeated) {
            if (content->host.isEndedUntil(leastEnd)) {
                return false;
            }
            leastEnd = ScriptClock::now() + leastRepetition;
            content->number = 0;
        }
    }
    return true;
}

} // namespace mxonline
