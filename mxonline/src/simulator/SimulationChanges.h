#pragma once

#include "channels/ChannelNames.h"
#include "simulator/SimulatedRegisters.h"

#include <mxonline/SimulatorEvent.h>

#include <vector>

namespace mxonline {

/// Finds out by name what a request changed.
class SimulationChanges
{
public:
    /// `planned` and `simulated` outlive the object.
    SimulationChanges(const mxstation::Plan& planned, SimulatedRegisters& simulated);

    /// Keeps what there is before a request is carried out.
    void begin();

    /// Returns what `request` changed since then.
    std::vector<SimulatorEvent> end(const ServedRequest& request);

private:
    void addOutputs(std::vector<SimulatorEvent>& events);
    void addParameters(const ServedRequest& request, std::vector<SimulatorEvent>& events);

    const mxstation::Plan& plan;
    SimulatedRegisters& registers;
    ChannelNames names;
    std::vector<std::uint8_t> outputs;
    std::size_t commits = 0;
};

} // namespace mxonline
