#include "coupler/Apply.h"

#include "bus/CouplerPlace.h"
#include "coupler/ModuleComparison.h"
#include "report/ApplyOutcome.h"
#include "report/UtcTime.h"

#include <fmt/format.h>

#include <algorithm>

namespace mxonline {

namespace {

using mxmodule::Failure;
using mxmodule::Origin;

bool isSameDifference(const ParameterDifference& a, const ParameterDifference& b)
{
    return a.address == b.address && a.found == b.found && a.planned == b.planned;
}

bool isSameModule(const ModuleDifference& a, const ModuleDifference& b)
{
    return a.identification == b.identification && a.foundId == b.foundId &&
           std::equal(a.parameters.begin(), a.parameters.end(), b.parameters.begin(),
                      b.parameters.end(), isSameDifference);
}

} // namespace

ApplyReport Apply::run(const CouplerDifference& confirmed)
{
    report.started = utcTime();
    before = compareModules(coupler.plan, coupler.modules, coupler.target,
                            coupler.parameters.read(coupler.client));
    requireConfirmed(confirmed);
    beginReport(report, coupler.plan, before);
    try {
        writeAll();
        commit();
    } catch (const Failure& failure) {
        report.findings = failure.findings();
    }
    readBack();
    report.finished = utcTime();
    return report;
}

void Apply::requireConfirmed(const CouplerDifference& confirmed)
{
    const std::string place = couplerPlace(before.target, before.map.unit);
    const std::string agreed = couplerPlace(confirmed.target, confirmed.map.unit);
    if (agreed != place) {
        throw Failure(Origin::Request, place,
                      fmt::format("what was agreed to is for {}; nothing was written", agreed),
                      "apply the difference of this coupler");
    }
    const auto identity = before.identityErrors();
    if (!identity.empty()) {
        throw Failure(identity);
    }
    if (!std::equal(before.modules.begin(), before.modules.end(), confirmed.modules.begin(),
                    confirmed.modules.end(), isSameModule)) {
        throw Failure(Origin::Output, place,
                      "the coupler no longer has the parameters that were shown; nothing was "
                      "written",
                      "another master or person may change them: look at the plan again");
    }
}

void Apply::writeAll()
{
    const std::vector<ParameterWrite> writes = writesToReach(coupler.modules, before);
    for (std::size_t i = 0; i < writes.size(); ++i) {
        tellProgress(i, writes.size());
        write(writes[i]);
    }
    tellProgress(writes.size(), writes.size());
}

// The observer may end the operation here, between two requests.
void Apply::tellProgress(std::size_t done, std::size_t total)
{
    if (coupler.observer != nullptr && total > 0) {
        coupler.observer->progress(done, total, "requests");
    }
}

void Apply::write(const ParameterWrite& one)
{
    coupler.client.write(one.address, one.values, one.subject);
    written.insert(written.end(), one.parameters.begin(), one.parameters.end());
}

void Apply::commit()
{
    if (before.map.commit) {
        coupler.client.write(before.map.commit->address, {before.map.commit->value},
                             "commit register");
        report.isCommitted = true;
    }
}

// Also after a fault: the report says what is there.
void Apply::readBack()
{
    try {
        const CouplerState state = coupler.parameters.read(coupler.client);
        addReadBack(report, coupler.modules,
                    compareModules(coupler.plan, coupler.modules, coupler.target, state), state);
    } catch (const Failure& failure) {
        report.findings.insert(report.findings.end(), failure.findings().begin(),
                               failure.findings().end());
    }
    addWritten(report, coupler.modules, written);
    addValueErrors(report);
}

} // namespace mxonline
