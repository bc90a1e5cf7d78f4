#pragma once

#include "bus/ByteStream.h"
#include "bus/ModbusContext.h"
#include "bus/ModbusLine.h"

namespace mxonline {

/// Modbus RTU: libmodbus opens and sets up the serial line; the frames are read here, because it
/// does not tell what was received of a frame that is incomplete or of another unit.
class SerialLine : public ModbusLine
{
public:
    SerialLine(SerialTarget coupler, std::uint8_t unitIdentifier, std::uint32_t milliseconds);

    Exchange exchange(const std::vector<std::uint8_t>& request) override;

private:
    void open();
    void waitForSilence();
    void dropLateAnswers();
    std::vector<std::uint8_t> receive(const std::vector<std::uint8_t>& sent);
    std::vector<std::uint8_t> readFrame(const std::vector<std::uint8_t>& sent) const;

    SerialTarget target;
    std::uint8_t unit;
    std::uint32_t timeout;
    ModbusContext context; // null: not open
    ByteStream::Clock::time_point lastByte;
    std::vector<std::uint8_t> unanswered; // the last request; empty: it was answered
    unsigned late = 0; // answers that may still come to requests that were given up
};

} // namespace mxonline
