#include "mxonline/CouplerDifference.h"

#include "bus/CouplerPlace.h"
#include "coupler/ModuleComparison.h"
#include "coupler/ParameterWrites.h"
#include "coupler/ShownRegisters.h"
#include "report/CouplerNotes.h"

#include <fmt/format.h>
#include <text/Hexadecimal.h>

#include <algorithm>
#include <utility>

namespace mxonline {

namespace {

Identification identificationOf(const ModuleState& state, const std::string& moduleId)
{
    if (!state.moduleId) {
        return Identification::NotPossible;
    }
    return text::hexOf(*state.moduleId, 8) == moduleId ? Identification::Same
                                                       : Identification::Other;
}

std::vector<std::uint16_t> part(const std::vector<std::uint16_t>& registers,
                                const ParameterRegisters& one)
{
    const auto begin = registers.begin() + static_cast<std::ptrdiff_t>(one.first);
    return {begin, begin + static_cast<std::ptrdiff_t>(one.count)};
}

std::vector<ParameterDifference> differencesOf(const ModuleRegisters& module,
                                               const std::vector<std::uint16_t>& read)
{
    const std::vector<std::uint16_t> planned = module.module().registers;
    std::vector<ParameterDifference> differences;
    if (read.size() != planned.size() || read == planned) {
        return differences;
    }
    const ShownRegisters shown(module, read);
    const std::vector<std::uint16_t> foundOnBus = module.reordered(read);
    const std::vector<std::uint16_t> plannedOnBus = module.reordered(planned);
    for (const ParameterRegisters& one : module.parameters()) {
        if (part(read, one) != part(planned, one)) {
            differences.push_back({module.names()[one.parameter],
                                   static_cast<std::uint16_t>(module.range(one).address),
                                   part(foundOnBus, one), part(plannedOnBus, one), shown.read(one),
                                   module.shownValues()[one.parameter]});
        }
    }
    return differences;
}

NeededWrites neededWrites(const std::vector<ModuleRegisters>& modules,
                          const CouplerDifference& difference)
{
    NeededWrites needed;
    if (!difference.identityErrors().empty()) {
        return needed;
    }
    for (const ParameterWrite& write : writesToReach(modules, difference)) {
        needed.parameters += write.parameters.size();
        needed.registers += write.values.size();
        ++needed.requests;
    }
    if (difference.map.commit) {
        ++needed.registers;
        ++needed.requests;
    }
    return needed;
}

} // namespace

const char* identificationName(Identification identification)
{
    switch (identification) {
    case Identification::Same:
        return "same";
    case Identification::Other:
        return "other";
    default:
        return "not possible";
    }
}

bool CouplerDifference::isSame() const
{
    const bool isRead = std::all_of(modules.begin(), modules.end(),
                                    [](const ModuleDifference& one) { return one.isRead; });
    return isRead && parameterCount() == 0 && identityErrors().empty();
}

std::size_t CouplerDifference::parameterCount() const
{
    std::size_t count = 0;
    for (const ModuleDifference& module : modules) {
        count += module.parameters.size();
    }
    return count;
}

std::vector<mxmodule::Finding> CouplerDifference::identityErrors() const
{
    std::vector<mxmodule::Finding> errors;
    for (const ModuleDifference& module : modules) {
        if (module.identification != Identification::Other) {
            continue;
        }
        mxmodule::Finding& error = errors.emplace_back();
        error.origin = mxmodule::Origin::Output;
        error.place = couplerPlace(target, map.unit);
        error.text = fmt::format("module {} \"{}\" is {} in the station, the coupler has {}",
                                 module.position, module.name, module.moduleId,
                                 isNoModule(module.foundId) ? "no module there" : module.foundId);
        error.hint =
            "compare the row of the station with the modules on the coupler, or the target "
            "with the coupler that is meant";
    }
    return errors;
}

CouplerDifference compare(const mxstation::Plan& plan, const Target& target,
                          const CouplerState& state)
{
    return compareModules(plan, moduleRegisters(plan), target, state);
}

CouplerDifference compareModules(const mxstation::Plan& plan,
                                 const std::vector<ModuleRegisters>& modules, const Target& target,
                                 const CouplerState& state)
{
    CouplerDifference difference;
    difference.station = plan.station;
    difference.target = targetText(target);
    difference.map = *plan.modbus;
    for (std::size_t i = 0; i < modules.size(); ++i) {
        const mxstation::PlannedModule& planned = modules[i].module();
        const ModuleState found = i < state.modules.size() ? state.modules[i] : ModuleState();
        ModuleDifference& module = difference.modules.emplace_back();
        module.position = planned.position;
        module.name = planned.name;
        module.moduleId = planned.module.moduleId();
        module.identification = identificationOf(found, module.moduleId);
        module.foundId = found.moduleId ? text::hexOf(*found.moduleId, 8) : "";
        module.isRead = found.registers.size() == planned.registers.size();
        module.parameters = differencesOf(modules[i], found.registers);
        module.withoutRegisters = modules[i].setWithoutRegisters();
    }
    difference.writes = neededWrites(modules, difference);
    return difference;
}

} // namespace mxonline
