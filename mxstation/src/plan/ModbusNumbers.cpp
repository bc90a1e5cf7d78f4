#include "plan/ModbusNumbers.h"

#include "text/ModbusWords.h"

#include <fmt/format.h>

#include <algorithm>

namespace mxstation {

namespace {

// Collects the numbers of a map that are not possible.
class NumberCheck
{
public:
    NumberCheck(const SourcePlace& stated, PlanFindings& collected)
        : place(stated), findings(collected)
    {}

    void within(const char* what, std::uint32_t number, const NumberLimits& limits)
    {
        if (number < limits.least || number > limits.most) {
            add(what, number, fmt::format("{} to {}", limits.least, limits.most));
        }
    }

    void function(const char* what, std::uint32_t number, const std::vector<std::uint32_t>& codes)
    {
        if (std::find(codes.begin(), codes.end(), number) == codes.end()) {
            add(what, number, fmt::format("{}", fmt::join(codes, " or ")));
        }
    }

    bool isPossible() const { return possible; }

private:
    void add(const char* what, std::uint32_t number, const std::string& expected)
    {
        possible = false;
        findings.add(place, mxmodule::Severity::Error,
                     fmt::format("{} of \"modbus\" is {}, expected {}", what, number, expected));
    }

    SourcePlace place;
    PlanFindings& findings;
    bool possible = true;
};

} // namespace

bool requirePossibleNumbers(const Station& station, PlanFindings& findings)
{
    const ModbusMap& map = *station.modbus;
    NumberCheck check(station.modbusPlace, findings);
    check.function("\"read\" of \"inputs\"", map.inputs.readFunction, readFunctions);
    check.function("\"read\" of \"outputs\"", map.outputs.readFunction, readFunctions);
    check.function("\"write\" of \"outputs\"", map.outputs.writeFunction, writeFunctions);
    check.within("\"stride\" of \"parameters\"", map.parameters.stride, strideLimits);
    if (map.identity) {
        check.function("\"read\" of \"identity\"", map.identity->readFunction, readFunctions);
        check.within("\"stride\" of \"identity\"", map.identity->stride, identityStrideLimits);
    }
    check.within("\"most_read\"", map.mostRead, mostReadLimits);
    check.within("\"most_written\"", map.mostWritten, mostWrittenLimits);
    check.within("\"timeout\"", map.timeout, timeoutLimits);
    check.within("\"busy\"", map.busyTime, busyLimits);
    check.within("\"retries\"", map.retries, retriesLimits);
    return check.isPossible();
}

} // namespace mxstation
