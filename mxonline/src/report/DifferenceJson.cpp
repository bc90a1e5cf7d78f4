#include "report/CouplerNotes.h"

#include <mxonline/CouplerDifference.h>

#include <text/JsonText.h>
#include <text/Utf8.h>

namespace mxonline {

namespace {

text::Json parameterJson(const ParameterDifference& one)
{
    return {{"name", text::toUtf8(one.parameter)},   {"address", one.address},
            {"found", text::toUtf8(one.foundShown)}, {"planned", text::toUtf8(one.plannedShown)},
            {"found_registers", one.found},          {"planned_registers", one.planned}};
}

text::Json moduleJson(const ModuleDifference& one)
{
    return {{"position", one.position},
            {"name", text::toUtf8(one.name)},
            {"module_id", one.moduleId},
            {"identification", identificationName(one.identification)},
            {"found_id", one.foundId.empty() ? text::Json() : text::Json(one.foundId)},
            {"read", one.isRead},
            {"parameters", text::listJson(one.parameters, parameterJson)},
            {"without_registers", text::textsJson(one.withoutRegisters)}};
}

text::Json commitJson(const mxstation::ModbusMap& map)
{
    if (!map.commit) {
        return nullptr;
    }
    return {{"address", map.commit->address},
            {"value", map.commit->value},
            {"reads", map.commit->readsAreStaged ? "staged" : "active"}};
}

} // namespace

std::string CouplerDifference::json() const
{
    return text::jsonText({{"schema", text::jsonSchema("mxtool.coupler-difference", 1)},
                           {"mxtool", MXONLINE_VERSION},
                           {"station", text::toUtf8(station)},
                           {"target", text::toUtf8(target)},
                           {"unit", map.unit},
                           {"identity", map.identity.has_value()},
                           {"commit", commitJson(map)},
                           {"same", isSame()},
                           {"differing", parameterCount()},
                           {"writes",
                            {{"parameters", writes.parameters},
                             {"registers", writes.registers},
                             {"requests", writes.requests}}},
                           {"modules", text::listJson(modules, moduleJson)},
                           {"notes", text::textsJson(notesOf(*this, DifferenceUse::Plan))}});
}

} // namespace mxonline
