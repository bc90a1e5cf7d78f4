#include "export/ModuleParameters.h"

#include "export/Provenance.h"
#include "text/StationErrors.h"

#include <fmt/format.h>

namespace mxstation {

namespace {

using mxmodule::Fieldbus;
using mxmodule::Finding;

Finding withoutRegisters(const Plan& plan, const PlannedModule& module)
{
    const Finding& reason = *module.noRegisters;
    return findingAt(
        plan.file, plan.source, module.place, mxmodule::Severity::Error,
        fmt::format("the parameters of \"{}\" have no Modbus form: {}", module.name, reason.text),
        reason.hint);
}

} // namespace

void requireImages(const Plan& plan, Fieldbus fieldbus)
{
    requireOk(plan);
    std::vector<Finding> errors;
    for (const PlannedModule& module : plan.modules) {
        if (fieldbus == Fieldbus::Modbus && module.noRegisters) {
            errors.push_back(withoutRegisters(plan, module));
        }
    }
    if (!errors.empty()) {
        throw mxmodule::Failure(std::move(errors));
    }
}

std::vector<char> bytesOnBus(const PlannedModule& module, Fieldbus fieldbus)
{
    if (fieldbus == Fieldbus::Raw) {
        return module.image;
    }
    std::vector<char> bytes;
    bytes.reserve(module.registers.size() * 2);
    for (const std::uint16_t word : module.registers) {
        bytes.push_back(static_cast<char>(word >> 8));
        bytes.push_back(static_cast<char>(word & 0xFF));
    }
    return bytes;
}

std::vector<ChangedParameter> changedParameters(const PlannedModule& module)
{
    std::vector<ChangedParameter> changed;
    if (module.image == module.module.defaultImage()) {
        return changed;
    }
    const auto configured = module.module.configuration(module.image, Fieldbus::Raw);
    const auto parameters = configured.parameters();
    const auto defaults = configured.defaults();
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (configured.isChanged(i)) {
            const mxmodule::Parameter& parameter = parameters[i];
            changed.push_back({parameter.callName,
                               parameter.hasOptions ? "#" + parameter.value : parameter.digits,
                               parameter.shown, defaults[i].shown});
        }
    }
    return changed;
}

} // namespace mxstation
