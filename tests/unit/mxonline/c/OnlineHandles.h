#pragma once

#include <mxonline/mxonline.h>

#include <FromC.h>

#include <string>

using testkit::contentOf;
using testkit::ErrorFromC;
using testkit::errorOf;
using testkit::FromC;

using OnlinePlanFromC = FromC<mxstation_plan, mxstation_plan_free>;
using CouplerFromC = FromC<mxonline_coupler, mxonline_coupler_free>;
using DifferenceFromC = FromC<mxonline_difference, mxonline_difference_free>;
using ReportFromC = FromC<mxonline_report, mxonline_report_free>;
using WatchFromC = FromC<mxonline_watch, mxonline_watch_free>;
using OutputsFromC = FromC<mxonline_outputs, mxonline_outputs_free>;
using SimulatorFromC = FromC<mxonline_simulator, mxonline_simulator_free>;

/// Unit 7. A simulator begins with the defaults: the main suppression is 50 Hz.
inline const char* const onlineSource = R"(station: Dosing
modbus: {unit: 7, timeout: 300, retries: 0, inputs: {address: 100}, outputs: {address: 200},
  parameters: {address: 1000}, identity: {address: 500}}
modules:
  - {module: MX0208.bin, name: Pumps, channels: {DO 1: {alias: P_101}}}
  - module: MX0304.bin
    name: Levels
    parameters: {Mains suppression: 60 Hz}
    channels: {AI 1: {alias: LT_101}}
  - {module: MX0404.bin, name: Valves}
)";

/// Returns the plan of the station in `source`, a text beside the example modules.
inline OnlinePlanFromC onlinePlanFromC(const std::string& source = onlineSource)
{
    const std::string name = std::string(EXAMPLE_MODULES) + "/station.yaml";
    const FromC<mxstation_station, mxstation_free> station(
        mxstation_from_text(source.data(), source.size(), name.c_str(), nullptr, nullptr));
    return OnlinePlanFromC(mxstation_plan_of(station.get(), nullptr));
}

/// A simulated coupler at a port of loopback that the system chose, and the coupler as seen there.
class SimulatedFromC
{
public:
    SimulatedFromC()
        : simulator(
              mxonline_simulator_start(onlinePlanFromC().get(), "tcp:127.0.0.1:0", 0, nullptr)),
          address(contentOf(mxonline_simulator_address(simulator.get(), nullptr))),
          coupler(mxonline_connect(onlinePlanFromC().get(), address.c_str(), nullptr))
    {}

    std::string value(const char* channel) const
    {
        return contentOf(mxonline_simulator_value(simulator.get(), channel, nullptr));
    }

    SimulatorFromC simulator;
    std::string address;
    CouplerFromC coupler;
};
