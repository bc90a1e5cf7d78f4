#include "bus/ModbusException.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace mxonline {

namespace {

struct NamedException
{
    std::uint8_t code;
    const char* name;
    const char* hint;
};

constexpr NamedException exceptions[] = {
    {1, "illegal function",
     "the coupler does not offer this function: compare \"read\" and \"write\" of \"modbus:\" with "
     "its manual"},
    {2, "illegal data address",
     "the coupler has no such registers: compare the addresses, the stride and the number of "
     "modules of \"modbus:\" with its manual"},
    {3, "illegal data value",
     "the coupler rejects the value or the number of registers: lower \"most_read\" or "
     "\"most_written\", or compare the value with the manual of the module"},
    {4, "server device failure", "the coupler reports a failure of its own: see its diagnosis"},
    {5, "acknowledge", "the coupler still works on a request: repeat this later"},
    {6, "server device busy", "the coupler is busy: repeat this later, or raise \"busy\""},
    {7, "negative acknowledge", "the coupler cannot do this now: see its diagnosis"},
    {8, "memory parity error", "the memory of the coupler is damaged: see its diagnosis"},
    {10, "gateway path unavailable", "the gateway has no way to this unit: compare \"unit\""},
    {11, "gateway target device failed to respond",
     "the gateway gets no answer from this unit: compare \"unit\", look at the coupler's supply "
     "and cable"}};

const NamedException* exceptionWith(std::uint8_t code)
{
    const auto* const found =
        std::find_if(std::begin(exceptions), std::end(exceptions),
                     [code](const NamedException& one) { return one.code == code; });
    return found == std::end(exceptions) ? nullptr : found;
}

} // namespace

std::string exceptionText(std::uint8_t code)
{
    const NamedException* const known = exceptionWith(code);
    return known != nullptr ? fmt::format("exception {} \"{}\"", code, known->name)
                            : fmt::format("exception {}, which the protocol does not define", code);
}

std::string exceptionHint(std::uint8_t code)
{
    const NamedException* const known = exceptionWith(code);
    return known != nullptr ? known->hint : "see the manual of the coupler";
}

} // namespace mxonline
