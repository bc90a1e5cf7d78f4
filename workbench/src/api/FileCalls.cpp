#include "api/AnswerText.h"
#include "api/CallFailure.h"
#include "api/Calls.h"
#include "api/FindingJson.h"
#include "api/RequestBody.h"
#include "http/Status.h"

#include <text/Utf8.h>

namespace workbench {

namespace {

OpenedStation& openedStation(const CallContext& context)
{
    OpenedStation* const station = context.workplace.station();
    if (station == nullptr) {
        throw CallFailure(status::notFound, "No station file is open",
                          "mxtool serve STATION.yaml opens one");
    }
    return *station;
}

// Of a text that is no UTF-8 the page could only give back another one.
std::string textOf(const OpenedStation& station, const FileContent& content)
{
    if (text::toUtf8(content.text) != content.text) {
        throw mxmodule::Failure(mxmodule::Origin::Input, station.path(),
                                "Found bytes that are no UTF-8, expected a text",
                                "store the file as UTF-8");
    }
    return content.text;
}

Response changedAnswer(const OpenedStation& station, const FileChanged& changed)
{
    const mxmodule::Finding finding = {
        mxmodule::Severity::Error, station.path(), changed.what(),
        "take over the changes, or save your text under another name"};
    return AnswerText()
        .add("findings", findingsJson({finding}, station.path()))
        .add("text", textOf(station, changed.present()))
        .add("version", changed.present().version)
        .response(status::conflict);
}

} // namespace

Response readFileCall(const CallContext& context, const Request& /*request*/)
{
    const OpenedStation& station = openedStation(context);
    const FileContent content = station.read();
    return AnswerText()
        .add("name", text::toUtf8(station.name()))
        .add("text", textOf(station, content))
        .add("version", content.version)
        .response();
}

Response fileVersionCall(const CallContext& context, const Request& /*request*/)
{
    return AnswerText().add("version", openedStation(context).read().version).response();
}

Response saveFileCall(const CallContext& context, const Request& request)
{
    const RequestBody body(request.body);
    OpenedStation& station = openedStation(context);
    try {
        const std::string version = station.save(body.text("text"), body.text("from"));
        return AnswerText().add("version", version).response();
    } catch (const FileChanged& changed) {
        return changedAnswer(station, changed);
    }
}

} // namespace workbench
