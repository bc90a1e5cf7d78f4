// Makes, checks, reads, maps and configures different modules in many threads at once, and one
// module and its channel map that all of them share, without a mutex, for ThreadSanitizer to watch:
// mxmodule has its own. They plan stations of these modules, and use one by the C interface, as
// well. Each thread finds what a thread that is alone finds.

#include "CallsFromC.h"

#include <mxmodule/Module.h>
#include <mxmodule/ReadFile.h>
#include <mxmodule/WantedValues.h>
#include <mxonline/Simulator.h>
#include <mxonline/Watch.h>
#include <mxstation/Declarations.h>
#include <mxstation/Pin.h>
#include <mxstation/StationCheck.h>
#include <mxstation/StationReport.h>

#include <iostream>
#include <string>
#include <thread>
#include <vector>

namespace {

using mxmodule::Fieldbus;
using mxmodule::Module;

constexpr std::size_t threadCount = 4;
constexpr int rounds = 3;
constexpr const char* files[] = {"MX0304.bin", "MX0602.bin", "MX0701.bin", "MX0404.yaml",
                                 "MX0108.bin"};

// Counts what it is told.
class Lines : public mxmodule::Observer
{
public:
    void notice(const mxmodule::Finding& finding) override { text += finding.text + '\n'; }
    std::string logLevel() const override { return "debug"; }

    std::string text;
};

std::string textOf(const std::vector<mxmodule::Finding>& findings)
{
    std::string text;
    for (const mxmodule::Finding& finding : findings) {
        text += finding.place + finding.text + finding.hint + '\n';
    }
    return text;
}

// Every parameter with the value that it has, and a value that is refused.
std::string composed(const Module& module)
{
    mxmodule::WantedValues wanted(module);
    const auto defaults = module.defaults(Fieldbus::Raw);
    wanted.add(mxmodule::readValues(defaults.json(), "own.json"), "own.json");
    const auto composition = module.compose(wanted.assignments());
    auto assignments = wanted.assignments();
    assignments.push_back({"Unknown", "1"});
    return std::string(composition.image.begin(), composition.image.end()) +
           std::to_string(composition.registers.size()) + textOf(composition.findings) +
           textOf(module.compose(assignments).findings);
}

std::string decoded(const Module& module)
{
    const auto bytes = module.defaults(Fieldbus::Modbus).bytes();
    const auto configuration = module.decode(bytes, Fieldbus::Modbus);
    return configuration.json() + configuration.valuesFile() + textOf(configuration.findings());
}

std::string mapped(const Module& module)
{
    Lines lines;
    const auto map = module.at({100, 200}).channelMap(&lines);
    return map.json() + map.svg() + lines.text;
}

std::string use(const Module& module)
{
    return module.json() + composed(module) + decoded(module) + mapped(module);
}

std::string checked(const mxmodule::ModuleFile& file)
{
    return mxmodule::checkJson({file.check()});
}

// The first half of a file is refused.
std::string refusal(std::vector<char> bytes)
{
    bytes.resize(bytes.size() / 2);
    try {
        Module::fromBytes(std::move(bytes), "half");
    } catch (const mxmodule::Failure& failure) {
        return failure.what();
    }
    return "accepted";
}

// A station with a warning and a value, whose files come from a folder that all threads share.
std::string plannedStation(const mxmodule::ModuleFolder& folder)
{
    mxstation::StationOptions options;
    options.folder = &folder;
    const auto station =
        mxstation::stationOf("layout: bytes-first\n"
                             "modules:\n"
                             "  - MX0108.bin\n"
                             "  - MX0602.bin\n"
                             "  - {module: MX0304.bin, parameters: {Mains suppression: 60 Hz}}\n",
                             EXAMPLE_MODULES "/station.yaml", options);
    const auto plan = mxstation::plan(station);
    return mxstation::checkOf(plan).json() + mxstation::stationText(plan) +
           mxstation::cHeader(plan).text + mxstation::pinned(station, plan);
}

// Each thread has a coupler of its own, which a thread of the simulator serves.
std::string appliedStation()
{
    const auto plan = mxstation::plan(
        mxstation::stationOf("modbus: {parameters: {address: 100}, identity: {address: 0}}\n"
                             "modules:\n"
                             "  - {module: MX0304.bin, parameters: {Mains suppression: 60 Hz}}\n",
                             EXAMPLE_MODULES "/online.yaml"));
    mxonline::Simulator simulator(plan, mxonline::listenTargetOf("tcp:127.0.0.1:0"));
    mxonline::Coupler coupler(plan, simulator.address());
    const auto difference = coupler.difference();
    const auto report = coupler.apply(difference);
    mxonline::Watch watch(coupler, {"AI 1"});
    simulator.setInput("AI 1", "5");
    return difference.question().substr(0, 20) + report.verdict() + report.sum +
           watch.sample().values.at(0).text;
}

// What is found in a module of its own for each file, in the one that is shared and in its map.
std::string find(const Module& shared, const mxmodule_module* sharedByC,
                 const mxmodule::ChannelMap& map, const mxmodule::ModuleFolder& folder)
{
    std::string all = map.svg() + map.json() + std::to_string(map.input().free.size());
    all += foundByC(sharedByC);
    all += plannedStation(folder) + std::to_string(folder.names().size()) + appliedStation();
    for (const char* name : files) {
        all += use(shared);
        const auto bytes = mxmodule::readFile(std::string(EXAMPLE_MODULES "/") + name);
        const mxmodule::ModuleFile file(name, bytes);
        Lines lines;
        mxmodule::ModuleOptions options;
        options.observer = &lines;
        all += use(Module(file, options)) + lines.text + checked(file) + refusal(bytes);
    }
    return all;
}

bool foundAlike()
{
    const Module shared = Module::fromFile(EXAMPLE_MODULES "/MX0502.bin");
    const HandleOfC sharedByC = loadedByC(EXAMPLE_MODULES "/MX0502.bin");
    const mxmodule::ChannelMap map = shared.channelMap();
    const mxmodule::ModuleFolder folder(EXAMPLE_MODULES);
    std::vector<std::string> found(threadCount);
    std::vector<std::thread> threads;
    for (std::string& own : found) {
        threads.emplace_back([&shared, &sharedByC, &map, &folder, &own] {
            own = find(shared, sharedByC.get(), map, folder);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    const Module other = Module::fromFile(EXAMPLE_MODULES "/MX0502.bin");
    const HandleOfC otherByC = loadedByC(EXAMPLE_MODULES "/MX0502.bin");
    const std::string alone = find(other, otherByC.get(), other.channelMap(), folder);
    for (const std::string& own : found) {
        if (own != alone) {
            return false;
        }
    }
    return !alone.empty();
}

} // namespace

int main()
{
    for (int round = 0; round < rounds; ++round) {
        if (!foundAlike()) {
            std::cerr << "wrong result\n";
            return 1;
        }
    }
}
