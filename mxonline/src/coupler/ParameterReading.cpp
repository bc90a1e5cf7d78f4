#include "coupler/ParameterReading.h"

#include "coupler/RegisterOrder.h"

#include <fmt/format.h>
#include <text/Hexadecimal.h>

#include <utility>

namespace mxonline {

namespace {

std::vector<RegisterItem> parameterItems(const std::vector<ModuleRegisters>& modules)
{
    std::vector<RegisterItem> items;
    for (const ModuleRegisters& module : modules) {
        for (const ParameterRegisters& one : module.parameters()) {
            items.push_back({module.range(one), moduleText(module.module()),
                             fmt::format("parameter \"{}\"", module.names()[one.parameter])});
        }
    }
    return items;
}

std::optional<RegisterReading> identityReading(const std::vector<ModuleRegisters>& modules,
                                               const mxstation::ModbusMap& map)
{
    if (!map.identity) {
        return std::nullopt;
    }
    std::vector<RegisterItem> items;
    items.reserve(modules.size());
    for (const ModuleRegisters& module : modules) {
        items.push_back({identifierRange(module, *map.identity), moduleText(module.module()),
                         "its identifier"});
    }
    return RegisterReading(map.identity->readFunction, items, map.mostRead);
}

} // namespace

ParameterReading::ParameterReading(const std::vector<ModuleRegisters>& rowModules,
                                   const mxstation::ModbusMap& described)
    : modules(rowModules),
      map(described),
      parameters(3, parameterItems(rowModules), described.mostRead),
      identities(identityReading(rowModules, described))
{}

CouplerState ParameterReading::read(ModbusClient& client)
{
    CouplerState state = readIdentity(client);
    if (hasExpectedModules(state)) {
        readParameters(client, state);
    }
    return state;
}

CouplerState ParameterReading::readIdentity(ModbusClient& client)
{
    CouplerState state;
    for (const ModuleRegisters& module : modules) {
        state.modules.emplace_back().position = module.module().position;
    }
    if (identities) {
        readIdentities(client, state);
    }
    return state;
}

void ParameterReading::readIdentities(ModbusClient& client, CouplerState& state)
{
    identities->read(client);
    for (std::size_t i = 0; i < modules.size(); ++i) {
        auto words = identities->values(identifierRange(modules[i], *map.identity));
        reorderValue(words, 0, words.size(), map);
        state.modules[i].moduleId = static_cast<std::uint32_t>(words[0]) << 16 | words[1];
    }
}

bool ParameterReading::hasExpectedModules(const CouplerState& state) const
{
    for (std::size_t i = 0; i < modules.size(); ++i) {
        const auto& found = state.modules[i].moduleId;
        if (found && text::hexOf(*found, 8) != modules[i].module().module.moduleId()) {
            return false;
        }
    }
    return true;
}

void ParameterReading::readParameters(ModbusClient& client, CouplerState& state)
{
    parameters.read(client);
    for (std::size_t i = 0; i < modules.size(); ++i) {
        const ModuleRegisters& module = modules[i];
        std::vector<std::uint16_t> registers;
        for (const ParameterRegisters& one : module.parameters()) {
            const auto values = parameters.values(module.range(one));
            registers.insert(registers.end(), values.begin(), values.end());
        }
        state.modules[i].registers = module.reordered(std::move(registers));
    }
}

} // namespace mxonline
