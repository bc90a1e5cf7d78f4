#include "bus/ModbusLine.h"

#include "bus/LineError.h"
#include "bus/ModbusException.h"
#include "bus/SerialLine.h"
#include "bus/TcpLine.h"

#include <fmt/format.h>

namespace mxonline {

bool isOfFunction(std::uint8_t answered, std::uint8_t requested)
{
    return (answered & ~exceptionBit) == requested;
}

void requireFunction(const std::vector<std::uint8_t>& request, const Exchange& exchange)
{
    const std::uint8_t answered = exchange.answer[0];
    const bool isException = (answered & exceptionBit) != 0;
    if (!isOfFunction(answered, request[0]) || (isException && exchange.answer.size() != 2)) {
        throw LineError(
            fmt::format("the answer is of function {}, expected {}", answered, request[0]),
            "compare the address and \"unit\"", exchange.sent, exchange.received);
    }
}

std::unique_ptr<ModbusLine> lineTo(const Target& target, const mxstation::ModbusMap& map)
{
    if (const auto* const tcp = std::get_if<TcpTarget>(&target)) {
        return std::make_unique<TcpLine>(*tcp, map.unit, map.timeout);
    }
    return std::make_unique<SerialLine>(std::get<SerialTarget>(target), map.unit, map.timeout);
}

} // namespace mxonline
