#pragma once

#include "bus/ModbusContext.h"
#include "bus/ModbusLine.h"

namespace mxonline {

/// Modbus TCP: libmodbus connects; the frames are made here, because its raw requests all have the
/// transaction 0, and its checked ones do not tell what was received.
class TcpLine : public ModbusLine
{
public:
    TcpLine(TcpTarget coupler, std::uint8_t unitIdentifier, std::uint32_t milliseconds);

    Exchange exchange(const std::vector<std::uint8_t>& request) override;

private:
    void open();
    void requireNothingUnasked();
    std::vector<std::uint8_t> receive(const std::vector<std::uint8_t>& sent) const;
    void requireHeader(const std::vector<std::uint8_t>& sent,
                       const std::vector<std::uint8_t>& received) const;

    TcpTarget target;
    std::uint8_t unit;
    std::uint32_t timeout;
    ModbusContext context; // null: not connected
    std::uint16_t transaction = 0;
};

} // namespace mxonline
