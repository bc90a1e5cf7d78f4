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

mxmodule::CatalogueQuery queryOf(const RequestBody& body)
{
    const auto query = mxmodule::CatalogueQuery(body.textOr("words", ""), body.texts("conditions"))
                           .limitedTo(body.numberOrNull("limit").value_or(0));
    const auto last = body.object("after");
    return last ? query.after(last->text("reference"), last->textOr("family", "")) : query;
}

} // namespace

Response searchCatalogueCall(const CallContext& context, const Request& request)
{
    const mxmodule::CatalogueQuery query = queryOf(RequestBody(request.body));
    auto catalogue = mxmodule::Catalogue::open(context.workplace.catalogueUrl());
    const mxmodule::CataloguePage page = catalogue.page(query);
    return AnswerText()
        .add("modules", text::listJson(page.modules, entryJson))
        .add("hasMore", page.hasMore)
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
