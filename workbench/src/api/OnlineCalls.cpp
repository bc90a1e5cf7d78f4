#include "api/AnswerText.h"
#include "api/CallFailure.h"
#include "api/Calls.h"
#include "api/ExportedFile.h"
#include "api/FindingJson.h"
#include "api/RequestBody.h"
#include "http/Status.h"

#include <text/Utf8.h>
#include <text/WholeNumber.h>

namespace workbench {

namespace {

OnlineSession& sessionOf(const CallContext& context)
{
    if (context.online == nullptr) {
        throw CallFailure(status::notFound, "No coupler is stated",
                          "mxtool serve STATION.yaml --target tcp:HOST states one");
    }
    return *context.online;
}

mxstation::Plan planIn(const CallContext& context, const RequestBody& body)
{
    return mxstation::plan(context.workplace.stationOf(body.text("text")));
}

const char* connectionName(OnlineConnection connection)
{
    switch (connection) {
    case OnlineConnection::None:
        return "none";
    case OnlineConnection::Connected:
        return "connected";
    case OnlineConnection::Failed:
        return "failed";
    }
    return "none";
}

text::Json workJson(const OnlineState& state)
{
    if (state.work == OnlineWork::None) {
        return {};
    }
    const char* const name = state.work == OnlineWork::Plan     ? "plan"
                             : state.work == OnlineWork::Verify ? "verify"
                                                                : "apply";
    return {{"kind", name}, {"done", state.done}, {"total", state.total}};
}

std::string differenceText(const std::optional<ShownDifference>& shown, const std::string& file)
{
    if (!shown) {
        return "";
    }
    const mxonline::CouplerDifference& difference = shown->difference;
    return AnswerText()
        .add("id", shown->id)
        .add("version", shown->version)
        .add("isPlan", shown->isPlan)
        .add("question", text::toUtf8(difference.question()))
        .add("identityErrors", findingsJson(difference.identityErrors(), file))
        .addText("difference", difference.json())
        .text();
}

text::Json liveValueJson(const LiveValue& live)
{
    return {{"name", text::toUtf8(live.channel.name)},
            {"module", live.channel.module},
            {"moduleName", text::toUtf8(live.channel.moduleName)},
            {"channel", text::toUtf8(live.channel.channel)},
            {"alias", text::toUtf8(live.channel.alias)},
            {"symbol", live.channel.symbol},
            {"text", live.value.text},
            {"hex", live.value.hex},
            {"isChanged", live.isChanged}};
}

text::Json liveJson(const std::optional<LiveValues>& live, const std::string& file)
{
    if (!live) {
        return {};
    }
    return {{"id", live->id},
            {"version", live->version},
            {"time", live->time},
            {"values", text::listJson(live->values, liveValueJson)},
            {"findings", findingsJson(live->findings, file)}};
}

// Work goes on; the state has what becomes of it.
Response startedAnswer(OnlineSession& session)
{
    return AnswerText().add("sequence", session.state().sequence).response(status::accepted);
}

template <typename Work>
Response begin(const CallContext& context, const Work& work)
{
    OnlineSession& session = sessionOf(context);
    try {
        work(session);
    } catch (const OnlineConflict& reason) {
        throw CallFailure(status::conflict, reason.what());
    }
    return startedAnswer(session);
}

std::uint64_t sequenceIn(const Request& request)
{
    const auto found = request.query.find("after");
    if (found == request.query.end()) {
        return 0;
    }
    const auto number = text::wholeNumber<std::uint64_t>(found->second);
    if (!number) {
        throw CallFailure(status::badRequest, "after: expected the sequence of an earlier answer");
    }
    return *number;
}

} // namespace

Response onlineStateCall(const CallContext& context, const Request& request)
{
    OnlineSession& session = sessionOf(context);
    const std::uint64_t known = sequenceIn(request);
    const OnlineState state = session.state();
    const std::string file = context.workplace.stationName();
    AnswerText answer;
    answer.add("sequence", state.sequence).add("isNew", state.sequence != known);
    if (state.sequence == known) {
        return answer.response();
    }
    return answer.add("target", session.target())
        .add("connection", connectionName(state.connection))
        .add("work", workJson(state))
        .add("findings", findingsJson(state.findings, file))
        .addText("plan", differenceText(state.difference, file))
        .addText("report", state.report ? state.report->json() : "")
        .add("live", liveJson(state.live, file))
        .add("traffic", mxonline::trafficText(state.traffic))
        .response();
}

Response onlinePlanCall(const CallContext& context, const Request& request)
{
    const RequestBody body(request.body);
    return begin(context,
                 [&](OnlineSession& session) { session.compare(planIn(context, body), true); });
}

Response onlineVerifyCall(const CallContext& context, const Request& request)
{
    const RequestBody body(request.body);
    return begin(context,
                 [&](OnlineSession& session) { session.compare(planIn(context, body), false); });
}

Response onlineApplyCall(const CallContext& context, const Request& request)
{
    const RequestBody body(request.body);
    OpenedStation* const station = context.workplace.station();
    const std::string saved = station == nullptr ? "" : station->read().version;
    return begin(context, [&](OnlineSession& session) { session.apply(body.number("id"), saved); });
}

Response onlineWatchCall(const CallContext& context, const Request& request)
{
    const RequestBody body(request.body);
    OnlineSession& session = sessionOf(context);
    const std::uint64_t id = session.watch(planIn(context, body), body.texts("channels"));
    return AnswerText()
        .add("sequence", session.state().sequence)
        .add("id", id)
        .response(status::accepted);
}

Response onlineUnwatchCall(const CallContext& context, const Request& /*request*/)
{
    return begin(context, [](OnlineSession& session) { session.endWatch(); });
}

Response onlineReportCall(const CallContext& context, const Request& request)
{
    const auto report = sessionOf(context).state().report;
    if (!report) {
        throw CallFailure(status::notFound, "There is no report: nothing was applied");
    }
    const auto format = request.query.find("format");
    const std::string wanted = format == request.query.end() ? "json" : format->second;
    if (wanted == "html") {
        return exportedFile("apply-report", ".html", report->html());
    }
    if (wanted == "text") {
        return exportedFile("apply-report", ".txt", report->text());
    }
    if (wanted == "json") {
        return exportedFile("apply-report", ".json", report->json());
    }
    rejectFormat({{"json", "", false}, {"html", "", false}, {"text", "", false}}, wanted);
}

} // namespace workbench
