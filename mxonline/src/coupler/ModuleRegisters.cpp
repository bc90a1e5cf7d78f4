#include "coupler/ModuleRegisters.h"

#include "coupler/RegisterOrder.h"

#include <fmt/format.h>

namespace mxonline {

namespace {

constexpr std::uint32_t identifierRegisters = 2;

} // namespace

ModuleRegisters::ModuleRegisters(const mxstation::PlannedModule& module,
                                 const mxstation::ModbusMap& described)
    : planned(module), map(described)
{
    const mxmodule::Configuration configuration =
        module.module.configuration(module.image, mxmodule::Fieldbus::Modbus);
    for (const mxmodule::PlacedParameter& place : configuration.places()) {
        places.push_back({place.parameter, place.begin / 2, place.size / 2});
    }
    std::vector<bool> isPlaced;
    for (const mxmodule::Parameter& parameter : configuration.parameters()) {
        callNames.push_back(parameter.callName);
        plannedShown.push_back(parameter.shown);
        isPlaced.push_back(false);
    }
    for (const ParameterRegisters& one : places) {
        isPlaced[one.parameter] = true;
    }
    for (std::size_t i = 0; i < callNames.size(); ++i) {
        if (!isPlaced[i] && configuration.isChanged(i)) {
            unreachable.push_back(callNames[i]);
        }
    }
}

RegisterRange ModuleRegisters::range() const
{
    const auto address =
        static_cast<std::uint32_t>(mxstation::firstRegisterOf(map.parameters, planned.position));
    return {address, static_cast<std::uint32_t>(planned.registers.size())};
}

RegisterRange ModuleRegisters::range(const ParameterRegisters& one) const
{
    return {static_cast<std::uint32_t>(range().address + one.first),
            static_cast<std::uint32_t>(one.count)};
}

std::vector<std::uint16_t> ModuleRegisters::reordered(std::vector<std::uint16_t> registers) const
{
    for (const ParameterRegisters& one : places) {
        reorderValue(registers, one.first, one.count, map);
    }
    return registers;
}

std::vector<ModuleRegisters> moduleRegisters(const mxstation::Plan& plan)
{
    std::vector<ModuleRegisters> all;
    std::vector<mxmodule::Finding> findings;
    for (const mxstation::PlannedModule& module : plan.modules) {
        if (module.noRegisters) {
            mxmodule::Finding& finding = findings.emplace_back(*module.noRegisters);
            finding.text = moduleText(module) + ": " + finding.text;
        } else {
            all.emplace_back(module, *plan.modbus);
        }
    }
    if (!findings.empty()) {
        throw mxmodule::Failure(findings);
    }
    return all;
}

RegisterRange identifierRange(const ModuleRegisters& module, const mxstation::ModbusIdentity& map)
{
    return {static_cast<std::uint32_t>(map.address + (module.module().position - 1) * map.stride),
            identifierRegisters};
}

std::string moduleText(const mxstation::PlannedModule& module)
{
    return fmt::format("module {} \"{}\"", module.position, module.name);
}

} // namespace mxonline
