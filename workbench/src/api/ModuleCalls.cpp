#include "api/AnswerText.h"
#include "api/CallFailure.h"
#include "api/Calls.h"
#include "api/ConfiguredText.h"
#include "api/FindingJson.h"
#include "api/ModuleExports.h"
#include "api/RequestBody.h"
#include "http/Status.h"

#include <mxmodule/Explanation.h>

namespace workbench {

namespace {

std::vector<mxmodule::Assignment> assignmentsIn(const RequestBody& body)
{
    std::vector<mxmodule::Assignment> assignments;
    for (const RequestBody& value : body.objects("values")) {
        mxmodule::Assignment assignment;
        assignment.name = value.text("name");
        assignment.value = value.text("value");
        assignments.push_back(assignment);
    }
    return assignments;
}

mxmodule::ModuleFile fileIn(const CallContext& context, const RequestBody& body)
{
    const std::string reference = body.text("reference");
    if (reference.empty() && context.workplace.moduleFile().empty()) {
        throw CallFailure(status::notFound, "reference: found \"\", but no mx file is open",
                          "state which module is meant; mxtool serve FILE opens one");
    }
    return context.workplace.module(reference);
}

} // namespace

Response moduleCall(const CallContext& context, const Request& request)
{
    const mxmodule::Module module(fileIn(context, RequestBody(request.body)));
    AnswerText answer;
    addDescription(answer, module);
    return answer.addText("configured", configuredText(module, module.defaultImage())).response();
}

Response moduleConfigurationCall(const CallContext& context, const Request& request)
{
    const RequestBody body(request.body);
    const mxmodule::Module module(fileIn(context, body));
    const mxmodule::Composition made = module.compose(assignmentsIn(body));
    return AnswerText()
        .addText("configured", made.ok() ? configuredText(module, made.image) : "")
        .add("findings", findingsJson(made.findings))
        .response();
}

Response moduleExplanationCall(const CallContext& context, const Request& request)
{
    const RequestBody body(request.body);
    Response response;
    response.body = mxmodule::Explanation(fileIn(context, body)).json();
    return response;
}

Response moduleExportCall(const CallContext& context, const Request& request)
{
    const RequestBody body(request.body);
    const mxmodule::ModuleFile file = fileIn(context, body);
    const mxmodule::Module module(file);
    const mxmodule::Composition made = module.compose(assignmentsIn(body));
    if (!made.ok()) {
        throw mxmodule::Failure(made.findings);
    }
    return moduleExport({file, module, made.image, csvStyleIn(body)}, body.text("format"));
}

} // namespace workbench
