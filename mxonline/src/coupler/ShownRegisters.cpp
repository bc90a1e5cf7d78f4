#include "coupler/ShownRegisters.h"

#include <algorithm>
#include <utility>

namespace mxonline {

namespace {

using mxmodule::Fieldbus;

ReadValue readValue(const mxmodule::Parameter& parameter)
{
    return {parameter.shown, parameter.isAccepted
                                 ? std::nullopt
                                 : std::optional("the value " + parameter.shown +
                                                 " is not accepted by the module's description")};
}

} // namespace

ShownRegisters::ShownRegisters(const ModuleRegisters& module, std::vector<std::uint16_t> readWords)
    : registers(module), words(std::move(readWords))
{
    const mxstation::PlannedModule& planned = module.module();
    try {
        readParameters =
            planned.module.decode(bytesOfRegisters(words), Fieldbus::Modbus).parameters();
    } catch (const mxmodule::Failure&) { // then each is read alone
    }
}

// One value that cannot be read does not hide the others.
ReadValue ShownRegisters::value(const ParameterRegisters& one) const
{
    if (readParameters) {
        return readValue((*readParameters)[one.parameter]);
    }
    const mxstation::PlannedModule& planned = registers.module();
    std::vector<std::uint16_t> alone = planned.registers;
    for (const ParameterRegisters& place : registers.parameters()) {
        if (place.parameter == one.parameter) { // all of its places must agree
            std::copy_n(words.begin() + static_cast<std::ptrdiff_t>(one.first), one.count,
                        alone.begin() + static_cast<std::ptrdiff_t>(place.first));
        }
    }
    try {
        return readValue(planned.module.decode(bytesOfRegisters(alone), Fieldbus::Modbus)
                             .parameters()[one.parameter]);
    } catch (const mxmodule::Failure& failure) {
        const std::string& reason = failure.reason().text;
        return {"no value: " + reason, reason};
    }
}

std::vector<char> bytesOfRegisters(const std::vector<std::uint16_t>& registers)
{
    std::vector<char> bytes;
    bytes.reserve(registers.size() * 2);
    for (const std::uint16_t word : registers) {
        bytes.push_back(static_cast<char>(word >> 8));
        bytes.push_back(static_cast<char>(word & 0xFF));
    }
    return bytes;
}

} // namespace mxonline
