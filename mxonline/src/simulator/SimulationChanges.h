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
    /// The arguments outlive the object.
    SimulationChanges(const mxstation::Plan& planned, const ChannelNames& channelNames,
                      const SimulatedRegisters& simulated);

    /// Keeps what there is before a request is carried out.
    void begin();

    /// Returns what `request` changed since then.
    std::vector<SimulatorEvent> end(const ServedRequest& request);

private:
    void addOutputs(std::vector<SimulatorEvent>& events);
    void addParameters(const ServedRequest& request, std::vector<SimulatorEvent>& events);

    const mxstation::Plan& plan;
    const ChannelNames& names;
    const SimulatedRegisters& registers;
    std::vector<std::uint8_t> outputs;
    std::size_t commits = 0;
};

} // namespace mxonline
