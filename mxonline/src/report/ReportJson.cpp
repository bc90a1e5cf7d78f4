#include "report/ReportWords.h"

#include <text/JsonText.h>
#include <text/Utf8.h>

namespace mxonline {

namespace {

text::Json orNull(const std::string& text)
{
    return text.empty() ? text::Json() : text::Json(text::toUtf8(text));
}

text::Json appliedParameterJson(const AppliedParameter& one)
{
    return {{"name", text::toUtf8(one.parameter)},
            {"address", one.address},
            {"before", text::toUtf8(beforeText(one))},
            {"planned", text::toUtf8(one.plannedShown)},
            {"now", orNull(one.nowShown)},
            {"before_registers", one.found.empty() ? one.planned : one.found},
            {"planned_registers", one.planned},
            {"now_registers", one.now.empty() ? text::Json() : text::Json(one.now)},
            {"written", one.isWritten},
            {"outcome", writeOutcomeName(one.outcome)}};
}

text::Json appliedModuleJson(const AppliedModule& one)
{
    return {{"position", one.position},
            {"name", text::toUtf8(one.name)},
            {"module_id", one.moduleId},
            {"identification", identificationName(one.identification)},
            {"found_id", orNull(one.foundId)},
            {"parameters", text::listJson(one.parameters, appliedParameterJson)},
            {"written_again", one.writtenAgain},
            {"without_registers", text::textsJson(one.withoutRegisters)},
            {"sha256", orNull(one.sum)}};
}

text::Json findingJson(const mxmodule::Finding& finding)
{
    return {{"severity", severityName(finding.severity)},
            {"place", text::toUtf8(finding.place)},
            {"text", text::toUtf8(finding.text)},
            {"hint", text::toUtf8(finding.hint)}};
}

} // namespace

std::string ApplyReport::json() const
{
    const text::Json committed = map.commit ? text::Json(isCommitted) : text::Json();
    return text::jsonText({{"schema", text::jsonSchema("mxtool.apply-report", 1)},
                           {"mxtool", version},
                           {"done", isDone()},
                           {"verdict", verdict()},
                           {"reasons", text::textsJson(reasons())},
                           {"station", text::toUtf8(station)},
                           {"station_sha256", stationSum},
                           {"target", text::toUtf8(target)},
                           {"unit", map.unit},
                           {"started", started},
                           {"finished", finished},
                           {"identity", map.identity.has_value()},
                           {"committed", committed},
                           {"read_back", isReadBack},
                           {"sha256", orNull(sum)},
                           {"modules", text::listJson(modules, appliedModuleJson)},
                           {"findings", text::listJson(findings, findingJson)},
                           {"notes", text::textsJson(notesOf(*this))}});
}

} // namespace mxonline
