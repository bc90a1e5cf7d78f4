#pragma once

#include "channels/ChannelNames.h"
#include "simulator/FaultPlay.h"
#include "simulator/SimulatedLine.h"
#include "simulator/SimulatedRegisters.h"
#include "simulator/SimulationChanges.h"

#include <mxonline/Simulator.h>

#include <mutex>

namespace mxonline {

/// What a simulated coupler has and does, for the thread that serves and for others.
class Simulation : public ServedUnit
{
public:
    /// `planned`, which is usable, outlives the object.
    Simulation(const mxstation::Plan& planned, const SimulatorOptions& options, LineKind line);

    std::uint8_t unit() const override { return plan.modbus->unit; }
    ServedAnswer answerTo(const std::vector<std::uint8_t>& pdu) override;
    void connected() override;
    void lineFailed(const std::string& reason) override;

    std::vector<std::uint8_t> image(bool isInput) const;
    ChannelValue value(const std::string& channel) const;
    void set(const std::string& channel, const std::string& value, bool isInput);
    std::vector<std::uint16_t> parameters(std::size_t position) const;
    SimulatorCounts counts() const;

private:
    std::vector<std::uint8_t> rejected(const ServedRequest& request, std::uint8_t code);
    std::vector<std::uint8_t> carriedOut(ServedRequest& request,
                                         const std::vector<std::uint8_t>& pdu, const DueFaults& due,
                                         std::vector<SimulatorEvent>& events);
    void tell(const std::vector<SimulatorEvent>& events);

    const mxstation::Plan& plan;
    SimulatorObserver* observer;
    ChannelNames names;
    mutable std::mutex access; // to all that follows
    SimulatedRegisters registers;
    FaultPlay faults;
    SimulationChanges changes;
    SimulatorCounts count;
};

} // namespace mxonline
