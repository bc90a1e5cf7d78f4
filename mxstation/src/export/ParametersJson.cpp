#include "export/ModuleParameters.h"
#include "export/Provenance.h"

#include <mxstation/ParameterExport.h>
#include <text/JsonText.h>

#include <text/Hexadecimal.h>
#include <text/Utf8.h>

namespace mxstation {

namespace {

using mxmodule::Fieldbus;
using text::Json;

Json changedJson(const ChangedParameter& changed)
{
    return {{"name", text::toUtf8(changed.name)},
            {"value", text::toUtf8(changed.value)},
            {"shown", text::toUtf8(changed.shown)},
            {"default_shown", text::toUtf8(changed.defaultShown)}};
}

Json parametersOf(const PlannedModule& module, Fieldbus fieldbus, const Json& file)
{
    const std::vector<char> bytes = bytesOnBus(module, fieldbus);
    return {{"position", module.position},
            {"name", text::toUtf8(module.name)},
            {"module_id", module.module.moduleId()},
            {"label", text::toUtf8(module.module.label())},
            {"file", file},
            {"size", bytes.size()},
            {"bytes", text::hexOfBytes(bytes, 0, bytes.size())},
            {"image", text::hexOfBytes(module.image, 0, module.image.size())},
            {"registers", module.noRegisters ? Json() : Json(module.registers)},
            {"changed", text::listJson(changedParameters(module), changedJson)}};
}

} // namespace

Json parametersJsonOf(const Plan& plan, Fieldbus fieldbus, const std::vector<std::string>& files)
{
    requireImages(plan, fieldbus);
    Json json = {{"schema", text::jsonSchema("mxtool.station-config", 1)}};
    Provenance(plan).addTo(json);
    json["station"] = text::toUtf8(plan.station);
    json["fieldbus"] = fieldbus == Fieldbus::Modbus ? "modbus" : "raw";
    json["modules"] = text::listJson(plan.modules, [&](const PlannedModule& module) {
        return parametersOf(module, fieldbus,
                            files.empty() ? Json() : Json(files[module.position - 1]));
    });
    return json;
}

std::string parametersJson(const Plan& plan, Fieldbus fieldbus)
{
    return text::jsonText(parametersJsonOf(plan, fieldbus, {}));
}

} // namespace mxstation
