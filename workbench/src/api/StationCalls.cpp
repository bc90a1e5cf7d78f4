#include "api/AnswerText.h"
#include "api/CallFailure.h"
#include "api/Calls.h"
#include "api/ConfiguredText.h"
#include "api/EditRequest.h"
#include "api/FindingJson.h"
#include "api/RefusedStation.h"
#include "api/RequestBody.h"
#include "api/StationExports.h"
#include "api/StationJson.h"
#include "http/Status.h"

#include <fmt/format.h>
#include <mxmodule/ProductPicture.h>
#include <mxstation/ChannelExport.h>
#include <mxstation/StationReport.h>
#include <text/Beginning.h>
#include <text/Sha256.h>
#include <text/Utf8.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace workbench {

namespace {

using mxmodule::Finding;
using mxstation::Plan;
using mxstation::Station;

// A text of a station as read and planned, and why it is not the wanted one.
struct Draft
{
    Station station;
    Plan plan;
    std::vector<Finding> refused;
};

// A text that is no station at all has the findings that say so.
Draft draftOf(const CallContext& context, const std::string& text)
{
    Draft draft;
    try {
        draft.station = context.workplace.stationOf(text);
        draft.plan = mxstation::plan(draft.station);
    } catch (const mxmodule::Failure& failure) {
        draft.station.file = context.workplace.stationName();
        draft.station.source = text;
        draft.plan.findings = failure.findings();
    }
    return draft;
}

// An edit may leave errors that there were before, but makes no text without errors one with some.
Draft editedDraft(const CallContext& context, const std::string& text,
                  const mxstation::StationEdit& edit)
{
    Draft before = draftOf(context, text);
    try {
        Draft after = draftOf(context, mxstation::edited(before.station, edit));
        if (after.plan.ok() || !before.plan.ok()) {
            return after;
        }
        before.refused = errorsWithoutPlaces(std::move(after.station));
    } catch (const mxmodule::Failure& failure) {
        before.refused = failure.findings();
    }
    return before;
}

const mxstation::PlannedModule* moduleAt(const Plan& plan, std::uint32_t position)
{
    return position == 0 || position > plan.modules.size() ? nullptr : &plan.modules[position - 1];
}

// The module that the page shows: its description only if it is asked for.
std::string shownModule(const Plan& plan, const RequestBody& body)
{
    const auto* const module = moduleAt(plan, body.numberOrNull("module").value_or(0));
    if (module == nullptr) {
        return "";
    }
    AnswerText answer;
    answer.add("position", module->position).add("entry", module->entry);
    if (body.isSet("describe")) {
        addDescription(answer, module->module);
    }
    return answer.addText("configured", configuredText(module->module, module->image)).text();
}

mxstation::DeclarationOptions declarationOptionsIn(const RequestBody& body)
{
    using mxstation::AddressStyle;
    using mxstation::VariableScope;
    constexpr AddressStyle styles[] = {AddressStyle::Byte, AddressStyle::Index,
                                       AddressStyle::Separate};
    constexpr VariableScope scopes[] = {VariableScope::Global, VariableScope::Program};
    return {styles[body.choice("address", {"byte", "index", "separate"})],
            scopes[body.choice("scope", {"global", "program"})]};
}

} // namespace

Response stationCall(const CallContext& context, const Request& request)
{
    const RequestBody body(request.body);
    const std::string text = body.text("text");
    const auto edit = body.object("edit");
    const Draft draft = edit ? editedDraft(context, text, editIn(*edit)) : draftOf(context, text);
    const bool isPlanned = draft.plan.ok();
    return AnswerText()
        .add("text", text::toUtf8(draft.station.source))
        .add("version", text::sha256(draft.station.source))
        .add("isPlanned", isPlanned)
        .add("findings", findingsJson(draft.plan.findings, draft.station.file))
        .add("refused", findingsJson(draft.refused, draft.station.file))
        .add("entries", entriesJson(draft.station, draft.plan))
        .addText("plan", isPlanned ? stationJson(draft.plan) : "")
        .addText("channels", isPlanned ? channelsJson(draft.plan) : "")
        .add("places", text::listJson(draft.plan.channels, bitsJson))
        .addText("module", isPlanned ? shownModule(draft.plan, body) : "")
        .response();
}

Response stationPicturesCall(const CallContext& context, const Request& request)
{
    const Draft draft = draftOf(context, RequestBody(request.body).text("text"));
    text::Json pictures = text::Json::object();
    for (const mxstation::PlannedModule& module : draft.plan.modules) {
        const std::string reference = text::toUtf8(module.reference);
        if (!pictures.contains(reference)) {
            const auto picture = mxmodule::pictureOf(module.module);
            pictures[reference] = picture ? text::Json(dataUrl(*picture)) : text::Json();
        }
    }
    return AnswerText().add("pictures", pictures).response();
}

Response stationExportCall(const CallContext& context, const Request& request)
{
    const RequestBody body(request.body);
    PlannedStation station;
    station.plan = draftOf(context, body.text("text")).plan;
    station.declarations = declarationOptionsIn(body);
    station.csv = csvStyleIn(body);
    station.module = body.numberOrNull("module").value_or(0);
    const auto name = std::filesystem::path(context.workplace.stationName()).stem().string();
    return stationExport(station, body.text("format"), name);
}

} // namespace workbench
