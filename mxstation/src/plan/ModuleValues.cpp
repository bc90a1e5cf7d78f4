#include "plan/ModuleValues.h"

#include "text/StationErrors.h"

#include <map>

namespace mxstation {

void ModuleValues::set(const Entry& entry, PlannedModule& planned)
{
    if (entry.parameters.empty() || findings.isFull()) {
        setDefaults(entry, planned);
    } else {
        setComposed(entry, planned);
    }
}

// The registers of the defaults are the same for all modules of a file.
void ModuleValues::setDefaults(const Entry& entry, PlannedModule& planned)
{
    planned.image = planned.module.defaultImage();
    const auto [found, isNew] = defaults.try_emplace(entry.module->bytes().data());
    if (isNew) {
        try {
            found->second.values = planned.module.registers(planned.image);
        } catch (const mxmodule::Failure& failure) {
            found->second.none = failure.reason();
        }
    }
    planned.registers = found->second.values;
    planned.noRegisters = found->second.none;
}

void ModuleValues::setComposed(const Entry& entry, PlannedModule& planned)
{
    std::vector<mxmodule::Assignment> assignments;
    assignments.reserve(entry.parameters.size());
    std::map<std::string, SourcePlace> places;
    for (const StatedValue& value : entry.parameters) {
        const std::string place = placeText(station.file, value.place);
        places.emplace(place, value.place);
        assignments.push_back({value.name, value.value, place, mxmodule::Origin::Input});
    }
    mxmodule::Composition composed = planned.module.compose(assignments);
    for (const mxmodule::Finding& finding : composed.findings) {
        const auto stated = places.find(finding.place);
        findings.add(stated == places.end() ? entry.place : stated->second, finding);
    }
    planned.image = std::move(composed.image);
    planned.registers = std::move(composed.registers);
    planned.noRegisters = std::move(composed.noRegisters);
}

} // namespace mxstation
