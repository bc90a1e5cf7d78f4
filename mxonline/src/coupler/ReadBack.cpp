#include "mxonline/ReadBack.h"

#include "bus/CouplerPlace.h"
#include "coupler/ModuleComparison.h"
#include "coupler/ModuleRegisters.h"
#include "coupler/ShownRegisters.h"

#include <fmt/format.h>
#include <mxonline/CouplerDifference.h>
#include <mxstation/ParameterEdit.h>

#include <algorithm>
#include <map>
#include <utility>

namespace mxonline {

namespace {

using mxmodule::Failure;
using mxmodule::Finding;
using mxmodule::Origin;
using mxmodule::Severity;

// The values on a coupler that a station cannot state.
class UnstatableValues
{
public:
    explicit UnstatableValues(std::string couplerName) : coupler(std::move(couplerName)) {}

    void collect(const ModuleRegisters& module, const std::vector<std::uint16_t>& read)
    {
        if (read == module.module().registers) {
            return;
        }
        const ShownRegisters shown(module, read);
        const std::size_t known = findings.size();
        for (const ParameterRegisters& one : module.parameters()) {
            if (const auto problem = shown.value(one).problem) {
                add(fmt::format("{}, parameter \"{}\": {}: {}", moduleText(module.module()),
                                module.names()[one.parameter], registersText(module.range(one)),
                                *problem));
            }
        }
        if (findings.size() == known && !shown.areValues()) {
            addUnequalPlaces(module, read);
        }
    }

    const std::vector<Finding>& all() const { return findings; }

private:
    // Each place of a parameter is a value, but not the same one as its first place.
    void addUnequalPlaces(const ModuleRegisters& module, const std::vector<std::uint16_t>& read)
    {
        std::map<std::size_t, const ParameterRegisters*> firstPlaces; // by parameter
        for (const ParameterRegisters& one : module.parameters()) {
            const ParameterRegisters& first =
                *firstPlaces.emplace(one.parameter, &one).first->second;
            const auto begin = read.begin() + static_cast<std::ptrdiff_t>(one.first);
            if (!std::equal(begin, begin + static_cast<std::ptrdiff_t>(one.count),
                            read.begin() + static_cast<std::ptrdiff_t>(first.first))) {
                add(fmt::format("{}, parameter \"{}\": {} and {} have different values",
                                moduleText(module.module()), module.names()[one.parameter],
                                registersText(module.range(first)),
                                addressesText(module.range(one))));
            }
        }
    }

    void add(const std::string& text)
    {
        findings.push_back({Severity::Error, coupler, text,
                            "a station cannot state it: give the module a value that it accepts, "
                            "or apply that of the station",
                            Origin::Output});
    }

    std::string coupler;
    std::vector<Finding> findings;
};

} // namespace

std::string withParametersOf(const mxstation::Station& station, const mxstation::Plan& plan,
                             const Target& target, const CouplerState& state)
{
    const std::vector<ModuleRegisters> modules = moduleRegisters(plan);
    const CouplerDifference difference = compareModules(plan, modules, target, state);
    const auto identity = difference.identityErrors();
    if (!identity.empty()) {
        throw Failure(identity);
    }
    UnstatableValues unstatable(couplerPlace(difference.target, plan.modbus->unit));
    std::vector<std::vector<std::uint16_t>> registers;
    for (std::size_t i = 0; i < difference.modules.size(); ++i) {
        registers.push_back(i < state.modules.size() ? state.modules[i].registers
                                                     : std::vector<std::uint16_t>());
        if (difference.modules[i].isRead) {
            unstatable.collect(modules[i], registers.back());
        }
    }
    if (!unstatable.all().empty()) {
        throw Failure(unstatable.all());
    }
    return mxstation::withParameters(station, plan, registers);
}

} // namespace mxonline
