#pragma once

#include "bus/ModbusContext.h"
#include "simulator/SimulatedLine.h"

namespace mxonline {

/// Modbus RTU. libmodbus opens and sets up the line; the frames are read and made here, as for TCP.
class SerialServer : public SimulatedLine
{
public:
    /// Throws a `mxmodule::Failure` when the line cannot be opened.
    SerialServer(SerialTarget wanted, ServedUnit& servedUnit);

    Target address() const override { return target; }
    void serve(const StopSignal& stop) override;

private:
    void openAgain(const StopSignal& stop);
    bool readBytes();
    void answerFrames(const StopSignal& stop);
    void answerUnknown(const StopSignal& stop);
    void answer(const std::vector<std::uint8_t>& pdu, const StopSignal& stop);

    SerialTarget target;
    ServedUnit& served;
    ModbusContext context; // null: the line failed
    std::vector<std::uint8_t> received;
};

} // namespace mxonline
