#include "bus/ModbusLine.h"

#include "bus/SerialLine.h"
#include "bus/TcpLine.h"

namespace mxonline {

std::unique_ptr<ModbusLine> lineTo(const Target& target, const mxstation::ModbusMap& map)
{
    if (const auto* const tcp = std::get_if<TcpTarget>(&target)) {
        return std::make_unique<TcpLine>(*tcp, map.unit, map.timeout);
    }
    return std::make_unique<SerialLine>(std::get<SerialTarget>(target), map.unit, map.timeout);
}

} // namespace mxonline
