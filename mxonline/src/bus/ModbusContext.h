#pragma once

#include <modbus/modbus.h>

#include <cstdint>
#include <memory>

namespace mxonline {

struct FreeModbusContext
{
    void operator()(modbus_t* context) const
    {
        modbus_close(context);
        modbus_free(context);
    }
};

/// A context of libmodbus, closed and freed with its owner.
using ModbusContext = std::unique_ptr<modbus_t, FreeModbusContext>;

/// Makes connecting and answers wait for `milliseconds`.
inline void setTimeout(modbus_t& context, std::uint32_t milliseconds)
{
    modbus_set_response_timeout(&context, milliseconds / 1000, milliseconds % 1000 * 1000);
}

} // namespace mxonline
