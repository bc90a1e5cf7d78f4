#include "coupler/UsablePlan.h"

#include <string>
#include <vector>

namespace mxonline {

namespace {

using mxmodule::Failure;
using mxmodule::Finding;
using mxmodule::Origin;
using mxmodule::Severity;

constexpr std::uint8_t mostUnitOfLine = 247;

std::vector<Finding> errorsOf(const mxstation::Plan& plan)
{
    std::vector<Finding> errors;
    for (const Finding& finding : plan.findings) {
        if (finding.severity == Severity::Error) {
            errors.push_back(finding);
        }
    }
    return errors;
}

} // namespace

const mxstation::Plan& requireUsable(const mxstation::Plan& plan, const Target& target)
{
    const std::vector<Finding> errors = errorsOf(plan);
    if (!errors.empty()) {
        throw Failure(errors);
    }
    const std::string& place = plan.file.empty() ? plan.station : plan.file;
    if (!plan.modbus) {
        throw Failure(Origin::Input, place,
                      "the station does not state the registers of its coupler (\"modbus:\")",
                      "add \"modbus: {parameters: {address: REGISTER}}\" with the registers of the "
                      "coupler's manual");
    }
    const bool isSerial = std::holds_alternative<SerialTarget>(target);
    if (isSerial && (plan.modbus->unit == 0 || plan.modbus->unit > mostUnitOfLine)) {
        throw Failure(Origin::Input, place,
                      "\"modbus:\" states unit " + std::to_string(plan.modbus->unit) +
                          ", expected 1 to 247 on a serial line",
                      "set \"unit\" to the address that the coupler has on the line");
    }
    return plan;
}

} // namespace mxonline
