#include "bus/SerialPort.h"

#include "bus/LineError.h"

#include <fmt/format.h>

#include <cerrno>

namespace mxonline {

namespace {

std::string openHint(int error)
{
    switch (error) {
    case ENOENT:
    case ENODEV:
    case ENXIO:
        return "the serial line does not exist: compare its name, look at the adapter's plug "
               "(ls /dev/ttyUSB* /dev/ttyS*)";
    case EACCES:
        return "add the user to the group that owns the device, usually dialout";
    case EBUSY:
        return "another program has opened it";
    default:
        return "a serial line is a device such as /dev/ttyUSB0";
    }
}

} // namespace

ModbusContext openSerial(const SerialTarget& target, std::uint8_t unit)
{
    errno = 0;
    ModbusContext context(modbus_new_rtu(target.device.c_str(), static_cast<int>(target.baud),
                                         target.parity, 8, static_cast<int>(target.stopBits)));
    if (context == nullptr || modbus_set_slave(context.get(), unit) != 0 ||
        modbus_connect(context.get()) != 0) {
        const int error = errno;
        throw LineError(fmt::format("the serial line {} cannot be opened: {}", target.device,
                                    modbus_strerror(error)),
                        openHint(error));
    }
    return context;
}

} // namespace mxonline
