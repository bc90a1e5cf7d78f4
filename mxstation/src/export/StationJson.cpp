#include "export/ByteText.h"
#include "export/PlanTotals.h"
#include "export/Provenance.h"
#include "text/LayoutWords.h"

#include <mxstation/StationReport.h>

#include <text/JsonText.h>
#include <text/Utf8.h>

namespace mxstation {

namespace {

using text::Json;

template <typename Number>
Json numberOrNull(const std::optional<Number>& number)
{
    return number ? Json(*number) : Json();
}

Json bytesJson(const ImageBytes& bytes)
{
    return {{"offset", bytes.offset}, {"size", bytes.size}};
}

Json imageLayoutJson(const ImageLayout& image)
{
    return {{"start", image.start},
            {"order", orderWords[static_cast<std::size_t>(image.order)]},
            {"align", image.alignment},
            {"pad_module", image.modulePadding},
            {"pad_image", image.imagePadding},
            {"status_before", image.statusBefore},
            {"status_behind", image.statusBehind},
            {"most_bytes", numberOrNull(image.mostBytes)}};
}

Json layoutJson(const Layout& layout)
{
    return {{"name", text::toUtf8(layout.name)},
            {"in", imageLayoutJson(layout.input)},
            {"out", imageLayoutJson(layout.output)},
            {"most_modules", layout.mostModules},
            {"byte_order", byteOrderWords[static_cast<std::size_t>(layout.byteOrder)]}};
}

Json moduleJson(const PlannedModule& module)
{
    const Json registers = module.noRegisters ? Json() : Json(module.registers.size());
    return {{"position", module.position},
            {"name", text::toUtf8(module.name)},
            {"module_id", module.module.moduleId()},
            {"label", text::toUtf8(module.module.label())},
            {"reference", text::toUtf8(module.reference)},
            {"device_type_id", module.module.deviceTypeId()},
            {"in", bytesJson(module.input)},
            {"out", bytesJson(module.output)},
            {"parameters", {{"size", module.image.size()}, {"registers", registers}}}};
}

Json gapJson(const Gap& gap)
{
    const ImageBytes touched = touchedBytes(gap);
    return {{"image", gap.isInput ? "in" : "out"},
            {"reason", gapReasonName(gap.reason)},
            {"offset", touched.offset},
            {"size", touched.size},
            {"bit", gap.firstBit % 8},
            {"bits", gap.bits},
            {"module", gap.module == 0 ? Json() : Json(gap.module)},
            {"name", text::toUtf8(gap.name)}};
}

Json totalsJson(const Plan& plan)
{
    const PlanTotals totals(plan);
    return {{"modules", plan.modules.size()},
            {"in", totals.input},
            {"out", totals.output},
            {"parameters", totals.parameters},
            {"registers", totals.registers}};
}

} // namespace

std::string stationJson(const Plan& plan)
{
    Json json = {{"schema", text::jsonSchema("mxtool.station", 1)}};
    Provenance(plan).addTo(json);
    json["station"] = text::toUtf8(plan.station);
    json["layout"] = layoutJson(plan.layout);
    json["input"] = bytesJson(plan.input);
    json["output"] = bytesJson(plan.output);
    json["modules"] = text::listJson(plan.modules, moduleJson);
    json["gaps"] = text::listJson(plan.gaps, gapJson);
    json["totals"] = totalsJson(plan);
    return text::jsonText(json);
}

} // namespace mxstation
