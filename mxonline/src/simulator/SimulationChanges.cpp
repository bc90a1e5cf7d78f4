#include "simulator/SimulationChanges.h"

#include "channels/ValueText.h"
#include "coupler/ShownRegisters.h"

namespace mxonline {

SimulationChanges::SimulationChanges(const mxstation::Plan& planned,
                                     const ChannelNames& channelNames,
                                     const SimulatedRegisters& simulated)
    : plan(planned), names(channelNames), registers(simulated)
{}

void SimulationChanges::begin()
{
    outputs = registers.outputs();
    commits = registers.commits();
}

std::vector<SimulatorEvent> SimulationChanges::end(const ServedRequest& request)
{
    std::vector<SimulatorEvent> events;
    addOutputs(events);
    addParameters(request, events);
    if (registers.commits() != commits) {
        events.push_back({SimulatorEventKind::Committed, "", ""});
    }
    return events;
}

void SimulationChanges::addOutputs(std::vector<SimulatorEvent>& events)
{
    if (outputs == registers.outputs()) {
        return;
    }
    for (std::size_t i = 0; i < plan.channels.size(); ++i) {
        const mxstation::Channel& channel = plan.channels[i];
        if (channel.isInput || reasonWithoutValue(plan, channel)) {
            continue;
        }
        const ValueBits now = bitsIn(plan, channel, registers.outputs());
        if (now != bitsIn(plan, channel, outputs)) {
            events.push_back(
                {SimulatorEventKind::OutputChanged, names.nameOf(i), valueOf(channel, now).text});
        }
    }
}

void SimulationChanges::addParameters(const ServedRequest& request,
                                      std::vector<SimulatorEvent>& events)
{
    for (std::size_t i = 0; i < registers.modules().size(); ++i) {
        const ModuleRegisters& module = registers.modules()[i];
        if (!module.range().overlaps(request.written)) {
            continue;
        }
        const ShownRegisters shown(module, registers.staged(i));
        for (const ParameterRegisters& one : module.parameters()) {
            if (module.range(one).overlaps(request.written)) {
                events.push_back({SimulatorEventKind::ParameterWritten,
                                  module.module().name + "/" + module.names()[one.parameter],
                                  shown.read(one)});
            }
        }
    }
}

} // namespace mxonline
