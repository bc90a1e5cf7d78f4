#include "api/AnswerText.h"
#include "api/Calls.h"
#include "api/FindingJson.h"
#include "api/RequestBody.h"

#include <mxmodule/Catalogue.h>
#include <text/Utf8.h>

namespace workbench {

namespace {

text::Json entryJson(const mxmodule::CatalogueEntry& entry)
{
    return {{"reference", text::toUtf8(entry.moduleId)},
            {"family", text::toUtf8(entry.family)},
            {"label", text::toUtf8(entry.label)},
            {"inputSize", entry.inputSize},
            {"outputSize", entry.outputSize},
            {"parameterSize", entry.parameterSize},
            {"fileSize", entry.fileSize},
            {"hasContent", entry.hasContent}};
}

} // namespace

Response searchCatalogueCall(const CallContext& context, const Request& request)
{
    const RequestBody body(request.body);
    const mxmodule::CatalogueQuery query(body.textOr("words", ""), body.texts("conditions"));
    auto catalogue = mxmodule::Catalogue::open(context.workplace.catalogueUrl());
    return AnswerText()
        .add("modules", text::listJson(catalogue.search(query), entryJson))
        .add("findings", findingsJson(catalogue.searchFindings(query)))
        .response();
}

Response moduleFilesCall(const CallContext& context, const Request& /*request*/)
{
    const auto fileJson = [](const ListedModule& module) {
        return text::Json{{"reference", text::toUtf8(module.reference)},
                          {"label", text::toUtf8(module.label)}};
    };
    return AnswerText()
        .add("modules", text::listJson(context.workplace.moduleFiles(), fileJson))
        .response();
}

} // namespace workbench
