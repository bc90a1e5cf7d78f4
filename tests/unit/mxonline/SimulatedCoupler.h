#pragma once

#include "coupler/CouplerFixture.h"

#include <mxonline/Simulator.h>

#include <string>

/// The simulated coupler of the station in `source`, a text beside the example modules, at a port
/// of loopback that the system chose.
class SimulatedCoupler
{
public:
    explicit SimulatedCoupler(const std::string& source,
                              const mxonline::SimulatorOptions& options = {})
        : plan(onlinePlan(source)), simulator(plan, mxonline::TcpTarget{"127.0.0.1", 0}, options)
    {}

    mxonline::Target target() const { return simulator.address(); }

    mxstation::Plan plan;
    mxonline::Simulator simulator;
};
