#include "c/StationHandles.h"
#include "export/Provenance.h"

#include <mxstation/StationCheck.h>
#include <mxstation/StationReport.h>

#include <array>

namespace mxstation {

std::shared_ptr<const PlannedStation> plannedStationOf(const mxstation_plan* plan)
{
    return mxmodule::requirePointer(plan, "a plan of a station").planned;
}

namespace {

const PlannedModule& moduleAt(const mxstation_plan* handle, std::size_t position)
{
    const Plan& plan = planOf(handle);
    requireOk(plan);
    if (position == 0 || position > plan.modules.size()) {
        const std::string accepted = plan.modules.empty()
                                         ? "the row has no module"
                                         : "expected 1 to " + std::to_string(plan.modules.size());
        throw mxmodule::Failure(mxmodule::Origin::Request, "",
                                "found position " + std::to_string(position) + " of a module, " +
                                    accepted);
    }
    return plan.modules[position - 1];
}

// Never null: a null pointer says that there is no result.
const std::uint16_t* firstOf(const std::vector<std::uint16_t>& registers)
{
    static const std::array<std::uint16_t, 1> none = {};
    return registers.empty() ? none.data() : registers.data();
}

} // namespace

} // namespace mxstation

using mxstation::bytesOfPlan;
using mxstation::moduleAt;
using mxstation::Plan;
using mxstation::PlannedModule;

mxstation_plan* mxstation_plan_of(const mxstation_station* station, mxmodule_error** error)
{
    return mxmodule::callFromC(error, [&] {
        const mxstation::Station& planned = *mxmodule::requirePointer(station, "a station").station;
        return new mxstation_plan{std::make_shared<const mxstation::PlannedStation>(
            mxstation::PlannedStation{planned, mxstation::plan(planned)})};
    });
}

void mxstation_plan_free(mxstation_plan* plan)
{
    delete plan;
}

int mxstation_plan_ok(const mxstation_plan* plan)
{
    return plan != nullptr && plan->planned->plan.ok() ? 1 : 0;
}

mxmodule_bytes* mxstation_plan_findings(const mxstation_plan* plan, mxmodule_error** error)
{
    return bytesOfPlan(plan, error,
                       [](const Plan& one) { return mxmodule::findingsJson(one.findings); });
}

mxmodule_bytes* mxstation_check_json(const mxstation_plan* plan, mxmodule_error** error)
{
    return bytesOfPlan(plan, error, [](const Plan& one) { return checkOf(one).json(); });
}

mxmodule_bytes* mxstation_plan_json(const mxstation_plan* plan, mxmodule_error** error)
{
    return bytesOfPlan(plan, error, mxstation::stationJson);
}

mxmodule_bytes* mxstation_plan_text(const mxstation_plan* plan, mxmodule_error** error)
{
    return bytesOfPlan(plan, error, mxstation::stationText);
}

int mxstation_module_count(const mxstation_plan* plan, size_t* count, mxmodule_error** error)
{
    return mxmodule::callFromC(error, [&] {
        mxstation::requireOk(mxstation::planOf(plan));
        mxmodule::requirePointer(count, "a place for the number") =
            mxstation::planOf(plan).modules.size();
        return 1;
    });
}

mxmodule_module* mxstation_module_at(const mxstation_plan* plan, size_t position,
                                     mxmodule_error** error)
{
    return mxmodule::callFromC(
        error, [&] { return mxmodule::newModule(moduleAt(plan, position).module); });
}

mxmodule_bytes* mxstation_module_image(const mxstation_plan* plan, size_t position,
                                       mxmodule_error** error)
{
    return mxmodule::callFromC(error,
                               [&] { return mxmodule::newBytes(moduleAt(plan, position).image); });
}

const uint16_t* mxstation_module_registers(const mxstation_plan* plan, size_t position,
                                           size_t* count, mxmodule_error** error)
{
    return mxmodule::callFromC(error, [&] {
        const PlannedModule& module = moduleAt(plan, position);
        if (module.noRegisters) {
            throw mxmodule::Failure(*module.noRegisters);
        }
        mxmodule::requirePointer(count, "a place for the number") = module.registers.size();
        return mxstation::firstOf(module.registers);
    });
}
