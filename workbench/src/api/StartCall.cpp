#include "api/AnswerText.h"
#include "api/Calls.h"
#include "api/ModuleExports.h"
#include "api/StationExports.h"

#include <mxmodule/Catalogue.h>
#include <text/Utf8.h>

#include <filesystem>

namespace workbench {

namespace {

const char* openedKind(const Workplace& workplace)
{
    if (workplace.station() != nullptr) {
        return "station";
    }
    return workplace.moduleFile().empty() ? "nothing" : "module";
}

text::Json openedName(const Workplace& workplace)
{
    if (workplace.station() != nullptr) {
        return text::toUtf8(workplace.station()->name());
    }
    return workplace.moduleFile().empty() ? text::Json()
                                          : text::Json(text::toUtf8(workplace.moduleFile()));
}

// Null: there is none, or it cannot be opened; a search says why.
text::Json catalogueName(const Workplace& workplace)
{
    try {
        return text::toUtf8(mxmodule::Catalogue::open(workplace.catalogueUrl()).name());
    } catch (const mxmodule::Failure&) {
        return {};
    }
}

text::Json conditionJson(const mxmodule::ConditionField& field)
{
    return {{"name", field.name},
            {"isNumber", field.isNumber},
            {"meaning", field.meaning},
            {"comparisons", field.comparisons}};
}

} // namespace

Response startCall(const CallContext& context, const Request& /*request*/)
{
    const Workplace& workplace = context.workplace;
    return AnswerText()
        .add("schema", text::jsonSchema("mxtool.workbench", 1))
        .add("version", WORKBENCH_VERSION)
        .add("opened", openedKind(workplace))
        .add("file", openedName(workplace))
        .add("catalogue", catalogueName(workplace))
        .add("target",
             context.online == nullptr ? text::Json() : text::Json(context.online->target()))
        .add("conditions", text::listJson(mxmodule::conditionFields(), conditionJson))
        .add("exports", {{"station", exportFormatsJson(stationExportFormats())},
                         {"module", exportFormatsJson(moduleExportFormats())}})
        .response();
}

} // namespace workbench
