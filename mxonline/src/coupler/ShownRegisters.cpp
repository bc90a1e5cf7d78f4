#include "coupler/ShownRegisters.h"

#include <mxmodule/Registers.h>

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
            planned.module.decode(mxmodule::bytesOfRegisters(words), Fieldbus::Modbus).parameters();
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
        return readValue(planned.module.decode(mxmodule::bytesOfRegisters(alone), Fieldbus::Modbus)
                             .parameters()[one.parameter]);
    } catch (const mxmodule::Failure& failure) {
        const std::string& reason = failure.reason().text;
        return {"no value: " + reason, reason};
    }
}

} // namespace mxonline
