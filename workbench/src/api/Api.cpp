#include "api/Api.h"

#include "api/AnswerText.h"
#include "api/CallFailure.h"
#include "api/CallTable.h"
#include "api/FindingJson.h"
#include "http/Status.h"

#include <fmt/format.h>
#include <text/Beginning.h>

namespace workbench {

namespace {

Response failureAnswer(unsigned status, const std::vector<mxmodule::Finding>& findings,
                       const std::string& file = {})
{
    return AnswerText().add("findings", findingsJson(findings, file)).response(status);
}

// What is wrong with the contents of a request is its sender's to correct; a file that cannot be
// written is not.
unsigned statusOf(const mxmodule::Failure& failure)
{
    return failure.reason().origin == mxmodule::Origin::Output ? status::internalError
                                                               : status::unprocessable;
}

Response answerBy(Call call, const CallContext& context, const Request& request)
{
    try {
        return call(context, request);
    } catch (const CallFailure& failure) {
        return failureAnswer(failure.status(), failure.findings());
    } catch (const mxmodule::Failure& failure) {
        return failureAnswer(statusOf(failure), failure.findings(),
                             context.workplace.stationName());
    }
}

Response unknownCall(const Request& request, const std::string& methods)
{
    if (methods.empty()) {
        const CallFailure failure(
            status::notFound,
            fmt::format("There is no call {} {}", request.method, text::abbreviated(request.path)));
        return failureAnswer(failure.status(), failure.findings());
    }
    const CallFailure failure(
        status::methodNotAllowed,
        fmt::format("Found {}, {} takes {}", request.method, request.path, methods));
    Response response = failureAnswer(failure.status(), failure.findings());
    response.allowed = methods;
    return response;
}

} // namespace

Response Api::answer(const Request& request) const
{
    std::string methods;
    for (const CallEntry& entry : callTable()) {
        if (request.path != entry.path) {
            continue;
        }
        if (request.method == entry.method) {
            return answerBy(entry.call, context, request);
        }
        methods += (methods.empty() ? "" : ", ") + std::string(entry.method);
    }
    return unknownCall(request, methods);
}

} // namespace workbench
