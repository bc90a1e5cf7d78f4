#include "report/ApplyOutcome.h"

#include "bus/CouplerPlace.h"
#include "bus/RegisterRange.h"
#include "coupler/ShownRegisters.h"

#include <fmt/format.h>
#include <mxmodule/Registers.h>
#include <text/Sha256.h>

#include <algorithm>

namespace mxonline {

namespace {

AppliedParameter appliedOf(const ParameterDifference& difference)
{
    AppliedParameter applied;
    applied.parameter = difference.parameter;
    applied.address = difference.address;
    applied.planned = difference.planned;
    applied.plannedShown = difference.plannedShown;
    return applied;
}

AppliedParameter* parameterAt(AppliedModule& module, std::uint32_t address)
{
    const auto found =
        std::find_if(module.parameters.begin(), module.parameters.end(),
                     [address](const AppliedParameter& one) { return one.address == address; });
    return found == module.parameters.end() ? nullptr : &*found;
}

// A parameter that was not to be written can also be different now.
AppliedParameter& parameterOf(AppliedModule& module, const ParameterDifference& difference)
{
    AppliedParameter* const known = parameterAt(module, difference.address);
    if (known != nullptr) {
        return *known;
    }
    const auto place = std::find_if(
        module.parameters.begin(), module.parameters.end(),
        [&difference](const AppliedParameter& one) { return one.address > difference.address; });
    return *module.parameters.insert(place, appliedOf(difference));
}

// What a person can do about a value that is not as planned.
const char* hintFor(const ApplyReport& report, const AppliedParameter& parameter)
{
    if (!parameter.isWritten && !parameter.found.empty()) {
        return "it was not written: correct the fault before, then apply again";
    }
    if (report.map.commit && !report.isCommitted) {
        return "it is not active without the commit, which was not confirmed: apply again";
    }
    return parameter.isWritten
               ? "the module keeps another value: see its manual for values that it accepts only "
                 "in certain states, and its diagnosis"
               : "it was as planned before: another master, or the module itself, changed it";
}

mxmodule::Finding notAsPlanned(const ApplyReport& report, const AppliedModule& module,
                               const AppliedParameter& parameter)
{
    const RegisterRange range{parameter.address,
                              static_cast<std::uint32_t>(parameter.planned.size())};
    mxmodule::Finding finding;
    finding.origin = mxmodule::Origin::Output;
    finding.place = couplerPlace(report.target, report.map.unit);
    finding.text = fmt::format("module {} \"{}\", parameter \"{}\": {}: read back {}, planned {}",
                               module.position, module.name, parameter.parameter,
                               registersText(range), parameter.nowShown, parameter.plannedShown);
    finding.hint = hintFor(report, parameter);
    return finding;
}

void addDifferences(AppliedModule& module, const ModuleDifference& after)
{
    for (AppliedParameter& one : module.parameters) {
        one.outcome = WriteOutcome::Verified;
        one.now = one.planned;
        one.nowShown = one.plannedShown;
    }
    for (const ParameterDifference& difference : after.parameters) {
        AppliedParameter& parameter = parameterOf(module, difference);
        parameter.outcome = WriteOutcome::Different;
        parameter.now = difference.found;
        parameter.nowShown = difference.foundShown;
    }
}

} // namespace

void beginReport(ApplyReport& report, const mxstation::Plan& plan, const CouplerDifference& before)
{
    report.station = before.station;
    report.stationSum = text::sha256(plan.source);
    report.target = before.target;
    report.map = before.map;
    report.version = MXONLINE_VERSION;
    for (const ModuleDifference& module : before.modules) {
        AppliedModule& applied = report.modules.emplace_back();
        applied.position = module.position;
        applied.name = module.name;
        applied.moduleId = module.moduleId;
        applied.identification = module.identification;
        applied.foundId = module.foundId;
        for (const ParameterDifference& difference : module.parameters) {
            applied.parameters.push_back(appliedOf(difference));
            applied.parameters.back().found = difference.found;
            applied.parameters.back().foundShown = difference.foundShown;
        }
        applied.withoutRegisters = module.withoutRegisters;
    }
}

void addReadBack(ApplyReport& report, const std::vector<ModuleRegisters>& modules,
                 const CouplerDifference& after, const CouplerState& state)
{
    for (std::size_t i = 0; i < modules.size(); ++i) {
        report.modules[i].identification = after.modules[i].identification;
        report.modules[i].foundId = after.modules[i].foundId;
    }
    const auto identity = after.identityErrors();
    if (!identity.empty()) { // without parameters
        report.findings.insert(report.findings.end(), identity.begin(), identity.end());
        return;
    }
    std::vector<char> all;
    for (std::size_t i = 0; i < modules.size(); ++i) {
        const std::vector<char> bytes = mxmodule::bytesOfRegisters(state.modules[i].registers);
        all.insert(all.end(), bytes.begin(), bytes.end());
        report.modules[i].sum = text::sha256({bytes.data(), bytes.size()});
        addDifferences(report.modules[i], after.modules[i]);
    }
    report.sum = text::sha256({all.data(), all.size()});
    report.isReadBack = true;
}

void addWritten(ApplyReport& report, const std::vector<ModuleRegisters>& modules,
                const std::vector<ParameterPlace>& written)
{
    for (const ParameterPlace& one : written) {
        const ModuleRegisters& module = modules[one.module];
        const RegisterRange range = module.range(module.parameters()[one.place]);
        AppliedModule& applied = report.modules[one.module];
        AppliedParameter* const parameter = parameterAt(applied, range.address);
        if (parameter != nullptr) {
            parameter->isWritten = true;
        }
        applied.writtenAgain += parameter == nullptr || parameter->found.empty() ? 1 : 0;
    }
}

void addValueErrors(ApplyReport& report)
{
    for (const AppliedModule& module : report.modules) {
        for (const AppliedParameter& one : module.parameters) {
            if (one.outcome == WriteOutcome::Different) {
                report.findings.push_back(notAsPlanned(report, module, one));
            }
        }
    }
}

} // namespace mxonline
