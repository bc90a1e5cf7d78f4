#pragma once

#include "http/Request.h"
#include "http/Response.h"
#include "session/OnlineSession.h"
#include "session/Workplace.h"

// The calls of the API, each answered by one function. What they throw becomes an answer in `Api`.

namespace workbench {

/// What all calls use.
struct CallContext
{
    Workplace& workplace;
    OnlineSession* online; ///< Null: no coupler is stated.
};

using Call = Response (*)(const CallContext& context, const Request& request);

Response startCall(const CallContext& context, const Request& request);

Response readFileCall(const CallContext& context, const Request& request);
Response fileVersionCall(const CallContext& context, const Request& request);
Response saveFileCall(const CallContext& context, const Request& request);

Response searchCatalogueCall(const CallContext& context, const Request& request);
Response moduleFilesCall(const CallContext& context, const Request& request);

Response moduleCall(const CallContext& context, const Request& request);
Response moduleConfigurationCall(const CallContext& context, const Request& request);
Response moduleExplanationCall(const CallContext& context, const Request& request);
Response moduleExportCall(const CallContext& context, const Request& request);

Response stationCall(const CallContext& context, const Request& request);
Response stationPicturesCall(const CallContext& context, const Request& request);
Response stationExportCall(const CallContext& context, const Request& request);

Response onlineStateCall(const CallContext& context, const Request& request);
Response onlinePlanCall(const CallContext& context, const Request& request);
Response onlineVerifyCall(const CallContext& context, const Request& request);
Response onlineApplyCall(const CallContext& context, const Request& request);
Response onlineWatchCall(const CallContext& context, const Request& request);
Response onlineUnwatchCall(const CallContext& context, const Request& request);
Response onlineReportCall(const CallContext& context, const Request& request);

} // namespace workbench
